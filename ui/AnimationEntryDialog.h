#pragma once
// "Enter animation data" (a new entry) and "Edit animation name and type" (an existing one, with
// "Delete"): one animation of the list, its type, frame sampling, range and motion extraction.

#include "ui/Dialog.h"

struct VAnimationDescription;
class VDialogView;
class VMessageBox;

namespace EntryControl {
inline constexpr int Name = 1055;
inline constexpr int Bone = 1072;
inline constexpr int Muscle = 1073;
inline constexpr int MorphTarget = 1121;
inline constexpr int Compress = 1134;
inline constexpr int PredefinedFrames = 1071;
inline constexpr int Smooth = 1036;
inline constexpr int SmoothFrames = 1037;
inline constexpr int UseRange = 1144;
inline constexpr int RangeStart = 1145;
inline constexpr int RangeEnd = 1146;
inline constexpr int Looped = 1032;
inline constexpr int MotionDelta = 1095;
inline constexpr int MoveX = 1096;
inline constexpr int MoveY = 1097;
inline constexpr int MoveZ = 1098;
inline constexpr int NoRotation = 1099;
inline constexpr int RotationX = 1100;
inline constexpr int RotationY = 1101;
inline constexpr int RotationZ = 1102;
inline constexpr int Compensate = 1119;
inline constexpr int Frames = 1126;
inline constexpr int Delete = 1125;
} // namespace EntryControl

// What the entry dialog answers.
inline constexpr int kEntryCancelled = 0;
inline constexpr int kEntryConfirmed = 1;
inline constexpr int kEntryDeleted = 2;

class AnimationEntryDialog final : public Dialog {
public:
    enum class Purpose { Add, Edit };

    // The entry changes only when the dialog is confirmed.
    AnimationEntryDialog(Purpose purpose, VAnimationDescription& entry, VMessageBox& messageBox, VDialogView* view,
                         bool toolTips);

    void Open() override;
    void Command(int id) override;

private:
    bool IsMorphTarget() const { return Checked(EntryControl::MorphTarget); }
    void EnableByType();
    void EnableMotionControls();
    void EnableSmoothFrames();
    void Confirm();
    bool Refuse(int focus, const char* text);

    VAnimationDescription& m_entry;
    VMessageBox& m_messageBox;
    VDialogView* m_view;
    bool m_toolTips;
};

// Shows the entry dialog (kEntryCancelled without a view) and answers what it ended with.
int EditAnimationEntry(AnimationEntryDialog::Purpose purpose, VAnimationDescription& entry, VMessageBox& messageBox,
                       VDialogView* view, bool toolTips);
