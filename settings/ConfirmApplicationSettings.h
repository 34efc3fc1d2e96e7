#pragma once
// What confirming the application settings dialog does. The dialog offers three check boxes;
// its other fields are shown but not taken over.

#include "settings/ApplicationSettings.h"

class VSettingsStore;

struct ApplicationSettingsChoices {
    bool ToolTips = false;
    bool WarnPolyCount = false;
    bool DebugPrint = false;
};

// Takes the three choices into settings and saves all settings. Switching debug printing off
// closes the debug file; switching it on opens "debug.txt" in the current folder at once, so that
// the rest of the session is traced without waiting for the next export. Answers whether the
// settings were saved.
bool ConfirmApplicationSettings(const ApplicationSettingsChoices& choices, ApplicationSettings& settings,
                                VSettingsStore& store);
