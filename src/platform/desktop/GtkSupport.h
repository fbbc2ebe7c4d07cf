#pragma once

// GTK beside SDL: boxes, dialogs and the tray icon are GTK's, the game's window is SDL's. Main
// thread only.

// Status icons and menus at a given place are deprecated, and still what classic trays need.
#define GDK_DISABLE_DEPRECATION_WARNINGS
#include <gtk/gtk.h>

#include <string>

namespace platform {

// Starts GTK at the first call. False when there is no display for it: then no other GTK function
// may be called in this run.
bool GtkReady();

// Handles what waits for GTK, without waiting. The message queue calls it each round.
void PumpGtk();

// Holds a new dialog until DestroyGtkDialog, also when the display takes its window away before.
GtkWidget* HoldGtkDialog(GtkWidget* dialog);
// Brings the dialog to the front and waits for its answer (a GTK response id). The game's window
// goes on answering the desktop meanwhile. A box shown while a dialog runs belongs to that dialog.
int RunGtkDialog(GtkWidget* dialog);
// Takes the dialog off the screen before the game goes on.
void DestroyGtkDialog(GtkWidget* dialog);

// The PNG resource of that name; null when it is missing or broken. The caller owns it.
GdkPixbuf* LoadPicture(const char* resource);

// GTK takes UTF-8 only; a settings file may hold anything.
std::string ValidText(const std::string& text);

}  // namespace platform
