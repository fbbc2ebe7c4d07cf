#include "platform/MessageBox.h"

#include <cstdio>

#include "platform/desktop/GtkSupport.h"

namespace platform {

namespace {

struct IconKind {
    GtkMessageType type;
    const char* name;  // in the icon theme
};

IconKind KindOf(BoxIcon icon) {
    switch (icon) {
        case BoxIcon::Question:
            return {GTK_MESSAGE_QUESTION, "dialog-question"};
        case BoxIcon::Exclamation:
            return {GTK_MESSAGE_WARNING, "dialog-warning"};
        case BoxIcon::Stop:
            return {GTK_MESSAGE_ERROR, "dialog-error"};
        case BoxIcon::Information:
            break;
    }
    return {GTK_MESSAGE_INFO, "dialog-information"};
}

// Y and N answer without Alt.
gboolean OnQuestionKey(GtkWidget* dialog, GdkEventKey* event, gpointer) {
    switch (event->keyval) {
        case GDK_KEY_y:
        case GDK_KEY_Y:
            gtk_dialog_response(GTK_DIALOG(dialog), GTK_RESPONSE_YES);
            return TRUE;
        case GDK_KEY_n:
        case GDK_KEY_N:
            gtk_dialog_response(GTK_DIALOG(dialog), GTK_RESPONSE_NO);
            return TRUE;
        default:
            return FALSE;
    }
}

GtkWidget* MakeBox(const char* text, const char* caption, BoxButtons buttons, BoxIcon icon) {
    const bool question = buttons == BoxButtons::YesNo;
    const IconKind kind = KindOf(icon);
    GtkWidget* dialog = gtk_message_dialog_new(nullptr, GTK_DIALOG_MODAL, kind.type,
                                               question ? GTK_BUTTONS_YES_NO : GTK_BUTTONS_OK, "%s",
                                               ValidText(text).c_str());
    gtk_window_set_title(GTK_WINDOW(dialog), ValidText(caption).c_str());
    // The type alone shows no icon.
    gtk_message_dialog_set_image(GTK_MESSAGE_DIALOG(dialog),
                                 gtk_image_new_from_icon_name(kind.name, GTK_ICON_SIZE_DIALOG));
    gtk_dialog_set_default_response(GTK_DIALOG(dialog),
                                    question ? GTK_RESPONSE_YES : GTK_RESPONSE_OK);
    if (question) {
        g_signal_connect(dialog, "key-press-event", G_CALLBACK(OnQuestionKey), nullptr);
    }
    return HoldGtkDialog(dialog);
}

}  // namespace

bool MessageBox(const char* text, const char* caption, BoxButtons buttons, BoxIcon icon) {
    if (!GtkReady()) {
        std::fprintf(stderr, "%s: %s\n", caption, text);
        return false;
    }
    GtkWidget* dialog = MakeBox(text, caption, buttons, icon);
    const int response = RunGtkDialog(dialog);
    DestroyGtkDialog(dialog);
    // Escape and the close box mean No; a box that only informs is agreed to in any way.
    return buttons == BoxButtons::Ok || response == GTK_RESPONSE_YES;
}

}  // namespace platform
