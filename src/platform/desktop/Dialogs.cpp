#include "platform/Dialogs.h"

#include "platform/desktop/GtkSupport.h"

namespace platform {

namespace {

constexpr int kTextLimit = 260;  // characters of a field
constexpr int kFieldChars = 32;  // shown at once
constexpr int kMargin = 12;      // pixels
constexpr double kReadOnlyOpacity = 0.5;

GtkWidget* MakeDialog(const char* title) {
    GtkWidget* dialog =
        gtk_dialog_new_with_buttons(title, nullptr, GTK_DIALOG_MODAL, "OK", GTK_RESPONSE_OK,
                                    "Cancel", GTK_RESPONSE_CANCEL, nullptr);
    gtk_dialog_set_default_response(GTK_DIALOG(dialog), GTK_RESPONSE_OK);
    gtk_window_set_resizable(GTK_WINDOW(dialog), FALSE);
    return HoldGtkDialog(dialog);
}

GtkGrid* AddGrid(GtkWidget* dialog) {
    GtkWidget* grid = gtk_grid_new();
    gtk_grid_set_row_spacing(GTK_GRID(grid), kMargin);
    gtk_grid_set_column_spacing(GTK_GRID(grid), kMargin);
    g_object_set(grid, "margin", kMargin, nullptr);
    gtk_container_add(GTK_CONTAINER(gtk_dialog_get_content_area(GTK_DIALOG(dialog))), grid);
    return GTK_GRID(grid);
}

GtkEntry* AddEntry(GtkGrid* grid, int row, const char* label, const std::string& text) {
    GtkWidget* caption = gtk_label_new(label);
    gtk_widget_set_halign(caption, GTK_ALIGN_START);
    gtk_grid_attach(grid, caption, 0, row, 1, 1);
    GtkWidget* entry = gtk_entry_new();
    gtk_entry_set_max_length(GTK_ENTRY(entry), kTextLimit);
    gtk_entry_set_width_chars(GTK_ENTRY(entry), kFieldChars);
    gtk_entry_set_activates_default(GTK_ENTRY(entry), TRUE);
    gtk_entry_set_text(GTK_ENTRY(entry), ValidText(text).c_str());
    gtk_grid_attach(grid, entry, 1, row, 1, 1);
    return GTK_ENTRY(entry);
}

// Read-only rather than out of use: the text can still be selected and copied.
void SetEditable(GtkEntry* entry, bool editable) {
    gtk_editable_set_editable(GTK_EDITABLE(entry), editable ? TRUE : FALSE);
    gtk_widget_set_opacity(GTK_WIDGET(entry), editable ? 1.0 : kReadOnlyOpacity);
}

// Until an answer other than OK, or an OK that is accepted.
template <typename Fields, typename ReadFields>
void RunForm(GtkWidget* dialog, const ReadFields& readFields,
             const std::function<bool(const Fields&)>& accept) {
    while (RunGtkDialog(dialog) == GTK_RESPONSE_OK) {
        if (accept(readFields())) {
            break;
        }
    }
    DestroyGtkDialog(dialog);
}

struct ProxyForm {
    GtkToggleButton* useProxy = nullptr;
    GtkEntry* address = nullptr;
    GtkEntry* port = nullptr;
};

void OnUseProxy(GtkToggleButton* button, gpointer data) {
    const auto* form = static_cast<const ProxyForm*>(data);
    const bool editable = gtk_toggle_button_get_active(button) != FALSE;
    SetEditable(form->address, editable);
    SetEditable(form->port, editable);
}

}  // namespace

void RunProxyDialog(const ProxyFields& initial,
                    const std::function<bool(const ProxyFields&)>& accept) {
    if (!GtkReady()) {
        return;
    }
    GtkWidget* dialog = MakeDialog("Set Proxy Configuration");
    GtkGrid* grid = AddGrid(dialog);
    GtkWidget* useProxy = gtk_check_button_new_with_label("Use Proxy Server");
    gtk_grid_attach(grid, useProxy, 0, 0, 2, 1);
    ProxyForm form = {GTK_TOGGLE_BUTTON(useProxy),
                      AddEntry(grid, 1, "Proxy Address", initial.address),
                      AddEntry(grid, 2, "Proxy Port", initial.port)};
    g_signal_connect(useProxy, "toggled", G_CALLBACK(OnUseProxy), &form);
    gtk_toggle_button_set_active(form.useProxy, initial.useProxy ? TRUE : FALSE);
    OnUseProxy(form.useProxy, &form);
    RunForm<ProxyFields>(
        dialog,
        [&form] {
            return ProxyFields{gtk_toggle_button_get_active(form.useProxy) != FALSE,
                               gtk_entry_get_text(form.address), gtk_entry_get_text(form.port)};
        },
        accept);
}

void RunServerDialog(const ServerFields& initial,
                     const std::function<bool(const ServerFields&)>& accept) {
    if (!GtkReady()) {
        return;
    }
    GtkWidget* dialog = MakeDialog("Add Online Server");
    GtkGrid* grid = AddGrid(dialog);
    GtkEntry* url = AddEntry(grid, 0, "Server URL", initial.url);
    GtkEntry* port = AddEntry(grid, 1, "Server Port", initial.port);
    RunForm<ServerFields>(
        dialog,
        [url, port] {
            return ServerFields{gtk_entry_get_text(url), gtk_entry_get_text(port)};
        },
        accept);
}

}  // namespace platform
