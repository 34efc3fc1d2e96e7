#pragma once
// "About Kestrel": the exporter's version.

#include "ui/Dialog.h"

inline constexpr int kAboutVersionText = 1002;

class AboutDialog final : public Dialog {
public:
    AboutDialog();
    void Command(int id) override;
};
