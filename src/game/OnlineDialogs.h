#pragma once

// The two dialogs of the online options. The game's window is hidden while one is open, and the
// frame loop stands still. Input that makes no sense gets a message box and the dialog stays.

void ShowProxyDialog();
void ShowAddServerDialog();
