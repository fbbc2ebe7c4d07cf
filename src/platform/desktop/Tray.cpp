#include "platform/Tray.h"

#include "platform/desktop/GtkSupport.h"  // before any header of GDK's own

#include <gdk/gdkx.h>

#include <string>

#include "platform/Messages.h"
#include "platform/desktop/GtkStatusNotifier.h"

namespace platform {

namespace {

constexpr guint kLeftButton = 1;
constexpr guint kRightButton = 3;
constexpr int kChooseDelayMs = 500;  // a classic tray takes the icon well within this time

// Where and how the icon was clicked last.
struct Click {
    int x = 0;  // on the screen; 0, 0 when unknown
    int y = 0;
    guint button = 0;  // of the press that is still to be released; 0 = none
    guint32 time = GDK_CURRENT_TIME;
};

struct Tray {
    bool started = false;
    bool shown = false;             // between AddTrayIcon and RemoveTrayIcon
    GtkStatusIcon* icon = nullptr;  // classic; null where the display knows none
    GtkWidget* menu = nullptr;      // the last one that popped up
    Click click;
};
Tray tray;

// A classic tray owns this selection of its screen.
bool HasClassicTray() {
    GdkDisplay* display = gdk_display_get_default();
    if (!GDK_IS_X11_DISPLAY(display)) {
        return false;
    }
    const std::string selection =
        "_NET_SYSTEM_TRAY_S" +
        std::to_string(gdk_x11_screen_get_screen_number(gdk_display_get_default_screen(display)));
    return XGetSelectionOwner(gdk_x11_display_get_xdisplay(display),
                              gdk_x11_get_xatom_by_name_for_display(display, selection.c_str())) !=
           None;
}

// One icon at a time: the classic tray goes first.
gboolean ChooseTray(gpointer) {
    ShowStatusNotifier(tray.shown && !HasClassicTray());
    return G_SOURCE_REMOVE;
}

void OnEmbedded(GObject*, GParamSpec*, gpointer) {
    g_timeout_add(kChooseDelayMs, ChooseTray, nullptr);
}

void PostClick(int button) {
    Message message;
    message.kind = MessageKind::Tray;
    message.code = button;
    PostMessage(message);
}

gboolean OnIconPressed(GtkStatusIcon*, GdkEventButton* event, gpointer) {
    if (event->button != kLeftButton && event->button != kRightButton) {
        return FALSE;
    }
    tray.click = {static_cast<int>(event->x_root), static_cast<int>(event->y_root), event->button,
                  event->time};
    PostClick(event->button == kLeftButton ? kTrayLeftButton : kTrayRightButton);
    return TRUE;
}

void OnNotifierClicked(bool mainAction, int x, int y) {
    tray.click = {.x = x, .y = y};
    PostClick(mainAction ? kTrayLeftButton : kTrayRightButton);
}

// Once for the run: window after window shows and hides the same icon.
void StartTray(const char* iconResource, const char* tip) {
    tray.started = true;
    GdkPixbuf* picture = LoadPicture(iconResource);
    if (GDK_IS_X11_DISPLAY(gdk_display_get_default())) {
        tray.icon = picture != nullptr ? gtk_status_icon_new_from_pixbuf(picture)
                                       : gtk_status_icon_new_from_icon_name("nebulorix");
        gtk_status_icon_set_title(tray.icon, "Nebulorix");
        gtk_status_icon_set_tooltip_text(tray.icon, tip);
        g_signal_connect(tray.icon, "button-press-event", G_CALLBACK(OnIconPressed), nullptr);
        g_signal_connect(tray.icon, "notify::embedded", G_CALLBACK(OnEmbedded), nullptr);
    }
    StartStatusNotifier(picture, tip, OnNotifierClicked);
}

// An item that cannot be chosen is dimmed; the picture keeps its colours.
GtkWidget* MakePicture(const char* resource) {
    GdkPixbuf* picture = LoadPicture(resource);
    GtkWidget* image = gtk_image_new_from_pixbuf(picture);
    g_clear_object(&picture);
    GtkCssProvider* style = gtk_css_provider_new();
    gtk_css_provider_load_from_data(style, "image { -gtk-icon-effect: none; opacity: 1; }", -1,
                                    nullptr);
    gtk_style_context_add_provider(gtk_widget_get_style_context(image), GTK_STYLE_PROVIDER(style),
                                   GTK_STYLE_PROVIDER_PRIORITY_APPLICATION);
    g_object_unref(style);
    return image;
}

GtkWidget* MakeItem(const TrayMenuItem& item) {
    GtkWidget* widget = nullptr;
    switch (item.kind) {
        case TrayMenuItem::Kind::Picture:
            widget = gtk_menu_item_new();
            gtk_container_add(GTK_CONTAINER(widget), MakePicture(item.text));
            gtk_widget_set_sensitive(widget, FALSE);
            break;
        case TrayMenuItem::Kind::Separator:
            widget = gtk_separator_menu_item_new();
            break;
        case TrayMenuItem::Kind::Text:
            widget = gtk_menu_item_new_with_label(item.text);
            break;
    }
    return widget;
}

void OnItemChosen(GtkMenuItem*, gpointer command) {
    Message message;
    message.kind = MessageKind::Command;
    message.code = GPOINTER_TO_INT(command);
    PostMessage(message);
}

// Centred below the pointer, or above it where the screen ends.
void PlaceMenu(GtkMenu* menu, gint* x, gint* y, gboolean* pushIn, gpointer) {
    int pointerX = tray.click.x;
    int pointerY = tray.click.y;
    GdkDisplay* display = gdk_display_get_default();
    if (pointerX == 0 && pointerY == 0) {
        gdk_device_get_position(gdk_seat_get_pointer(gdk_display_get_default_seat(display)),
                                nullptr, &pointerX, &pointerY);
    }
    GtkRequisition size = {};
    gtk_widget_get_preferred_size(GTK_WIDGET(menu), nullptr, &size);
    GdkRectangle monitor = {};
    gdk_monitor_get_geometry(gdk_display_get_monitor_at_point(display, pointerX, pointerY),
                             &monitor);
    *x = pointerX + 1 - size.width / 2;
    *y = pointerY + size.height > monitor.y + monitor.height ? pointerY - size.height : pointerY;
    *pushIn = TRUE;
}

}  // namespace

bool AddTrayIcon(const char* iconResource, const char* tip) {
    if (!GtkReady()) {
        return true;
    }
    if (!tray.started) {
        StartTray(iconResource, tip);
    }
    tray.shown = true;
    if (tray.icon != nullptr) {
        gtk_status_icon_set_visible(tray.icon, TRUE);
    }
    ChooseTray(nullptr);
    return !HasClassicTray() && !StatusNotifierHasHost();
}

bool RemoveTrayIcon() {
    const bool wasShown = tray.shown;
    tray.shown = false;
    if (tray.icon != nullptr) {
        gtk_status_icon_set_visible(tray.icon, FALSE);
    }
    if (tray.started) {
        ChooseTray(nullptr);
    }
    return !wasShown;
}

void PopupTrayMenu(const std::vector<TrayMenuItem>& items) {
    if (!GtkReady()) {
        return;
    }
    if (tray.menu != nullptr) {
        gtk_widget_destroy(tray.menu);
        g_object_unref(tray.menu);
    }
    tray.menu = gtk_menu_new();
    g_object_ref_sink(tray.menu);
    for (const TrayMenuItem& item : items) {
        GtkWidget* widget = MakeItem(item);
        if (item.kind == TrayMenuItem::Kind::Text) {
            g_signal_connect(widget, "activate", G_CALLBACK(OnItemChosen),
                             GINT_TO_POINTER(item.command));
        }
        gtk_menu_shell_append(GTK_MENU_SHELL(tray.menu), widget);
    }
    gtk_widget_show_all(tray.menu);
    // The menu opens while the button is still down. Knowing the press, it stays open when that is
    // released; otherwise it would take the release for a click beside its items.
    gtk_menu_popup(GTK_MENU(tray.menu), nullptr, nullptr, PlaceMenu, nullptr, tray.click.button,
                   tray.click.time);
}

}  // namespace platform
