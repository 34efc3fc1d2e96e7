#pragma once
// "Key frames": the frames the last export sampled for one animation, as times on its time line.

#include "ui/Dialog.h"

struct VAnimationDescription;

inline constexpr int kKeyFrameList = 1200;

class KeyFramesDialog final : public Dialog {
public:
    explicit KeyFramesDialog(const VAnimationDescription& entry);
    void Open() override;
    void Command(int id) override;

private:
    const VAnimationDescription& m_entry;
};
