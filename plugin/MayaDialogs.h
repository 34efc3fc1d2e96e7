#pragma once
// Inside an interactive Maya the dialogs and message boxes are Qt windows over Maya's main window.

// Starts the module with those views; does nothing in Maya's batch mode, which never shows a view.
void UseMayaDialogs();
