#pragma once
// What starting an external program needs from the platform: where programs are registered, how
// processes start, and how failures reach the user.

class VProcessLauncher;
class VSettingsStore;
class VMessageBox;

struct ExternalProgramServices {
    const VSettingsStore& Store;
    VProcessLauncher& Launcher;
    VMessageBox& MessageBox;
};
