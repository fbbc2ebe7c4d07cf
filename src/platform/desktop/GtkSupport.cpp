#include "platform/desktop/GtkSupport.h"

#include <SDL.h>

#include <cstring>

#include "platform/Messages.h"
#include "platform/Resources.h"
#include "platform/desktop/DesktopMessages.h"

namespace platform {

namespace {

constexpr int kMaxEventsInARow = 200;  // GTK may not hold up a frame for ever
constexpr int kWindowPollMs = 50;      // how often the game's window answers while a dialog is open

GtkWindow* runningDialog = nullptr;

bool StartGtk() {
    const char* driver = SDL_GetCurrentVideoDriver();
    const bool offscreen = driver != nullptr && (std::strcmp(driver, "dummy") == 0 ||
                                                 std::strcmp(driver, "offscreen") == 0);
    if (offscreen) {
        return false;  // nobody would see the box that the game waits for
    }
    if (driver != nullptr && std::strcmp(driver, "x11") == 0) {
        gdk_set_allowed_backends("x11");  // windows of two display systems do not mix
    }
    gtk_disable_setlocale();  // the files of the game have decimal points
    g_set_prgname("nebulorix");
    if (gtk_init_check(nullptr, nullptr) == FALSE) {
        return false;
    }
    if (GdkPixbuf* icon = LoadPicture("Icon")) {
        gtk_window_set_default_icon(icon);
        g_object_unref(icon);
    }
    SetIdlePump(PumpGtk);
    return true;
}

gboolean KeepWindowAlive(gpointer) {
    if (SDL_WasInit(SDL_INIT_VIDEO) != 0) {
        SDL_PumpEvents();
    }
    if (CloseRequestedBySignal() && runningDialog != nullptr) {
        gtk_dialog_response(GTK_DIALOG(runningDialog), GTK_RESPONSE_DELETE_EVENT);
    }
    return G_SOURCE_CONTINUE;
}

}  // namespace

bool GtkReady() {
    static const bool ready = StartGtk();
    return ready;
}

void PumpGtk() {
    for (int i = 0; i < kMaxEventsInARow && gtk_events_pending() != FALSE; ++i) {
        gtk_main_iteration_do(FALSE);
    }
}

GtkWidget* HoldGtkDialog(GtkWidget* dialog) {
    return GTK_WIDGET(g_object_ref(dialog));
}

int RunGtkDialog(GtkWidget* dialog) {
    GtkWindow* window = GTK_WINDOW(dialog);
    GtkWindow* parent = runningDialog;
    gtk_window_set_keep_above(window, TRUE);
    if (parent != nullptr && parent != window) {
        gtk_window_set_transient_for(window, parent);
        gtk_window_set_position(window, GTK_WIN_POS_CENTER_ON_PARENT);
    } else {
        gtk_window_set_position(window, GTK_WIN_POS_CENTER);
    }
    gtk_widget_show_all(dialog);
    gtk_window_present(window);
    runningDialog = window;
    const guint timer = g_timeout_add(kWindowPollMs, KeepWindowAlive, nullptr);
    const int response = gtk_dialog_run(GTK_DIALOG(dialog));
    g_source_remove(timer);
    runningDialog = parent;
    return response;
}

void DestroyGtkDialog(GtkWidget* dialog) {
    gtk_widget_destroy(dialog);
    g_object_unref(dialog);
    PumpGtk();
    gdk_display_flush(gdk_display_get_default());
}

GdkPixbuf* LoadPicture(const char* resource) {
    const Resource picture = FindResource(resource, "PICTURE");
    if (picture.data == nullptr) {
        return nullptr;
    }
    GInputStream* stream = g_memory_input_stream_new_from_data(
        picture.data, static_cast<gssize>(picture.size), nullptr);
    GdkPixbuf* pixbuf = gdk_pixbuf_new_from_stream(stream, nullptr, nullptr);
    g_object_unref(stream);
    return pixbuf;
}

std::string ValidText(const std::string& text) {
    gchar* valid = g_utf8_make_valid(text.c_str(), -1);
    std::string result(valid);
    g_free(valid);
    return result;
}

}  // namespace platform
