#pragma once
// Message boxes: decisions the exporter needs at once. The plug-in shows them as Windows message
// boxes; in batch mode each is answered by its default button and printed.

#include <string>

enum class VMessageBoxOwner { None, ActiveWindow, Desktop };
enum class VMessageBoxButtons { Ok, OkCancel, YesNo, YesNoCancel };
enum class VMessageBoxIcon { None, Information, Exclamation, Error, Question };
enum class VMessageBoxAnswer { Ok, Cancel, Yes, No };

struct VMessageBoxRequest {
    std::string Caption;
    std::string Text;
    VMessageBoxOwner Owner = VMessageBoxOwner::None;
    VMessageBoxButtons Buttons = VMessageBoxButtons::Ok;
    VMessageBoxIcon Icon = VMessageBoxIcon::None;
    // Must be one of the buttons shown.
    VMessageBoxAnswer DefaultAnswer = VMessageBoxAnswer::Ok;
};

class VMessageBox {
public:
    virtual ~VMessageBox() = default;
    // Modal: answers once the user has chosen.
    virtual VMessageBoxAnswer Show(const VMessageBoxRequest& request) = 0;
};
