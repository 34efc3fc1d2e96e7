#include "ui/AnimationEntryDialog.h"

#include "base/TextUtil.h"
#include "settings/VAnimationDescription.h"
#include "ui/DialogLayoutBuilder.h"
#include "ui/DialogNumbers.h"
#include "ui/KeyFramesDialog.h"
#include "ui/VDialogView.h"
#include "ui/VMessageBox.h"

#include <array>

namespace ec = EntryControl;

namespace {

constexpr int kTypeGroup = 1;
constexpr int kRotationGroup = 2;

constexpr std::array kRotationButtons {ec::NoRotation, ec::RotationX, ec::RotationY, ec::RotationZ};
constexpr std::array kMotionControls {ec::MoveX, ec::MoveY, ec::MoveZ, ec::NoRotation, ec::RotationX,
                                      ec::RotationY, ec::RotationZ, ec::Compensate};

DialogLayout EntryLayout(AnimationEntryDialog::Purpose purpose)
{
    const bool adding = purpose == AnimationEntryDialog::Purpose::Add;
    DialogLayoutBuilder b(adding ? 115 : 121, adding ? "Enter animation data" : "Edit animation name and type");
    b.Section("", 0);
    b.Add(ec::Name, ControlKind::Edit, "Name:", "The animation's name in the engine; each name may be used once");
    b.Section("Type", 0);
    b.Add(ec::Bone, ControlKind::Radio, "Bone animation", "The skeleton's bones move").Group = kTypeGroup;
    b.Add(ec::Compress, ControlKind::Check, "Compress", "Store the bone tracks compressed");
    b.NextRow().Add(ec::Muscle, ControlKind::Radio, "Muscle animation", "Every vertex moves on its own").Group =
        kTypeGroup;
    b.NextRow().Add(ec::MorphTarget, ControlKind::Radio, "Morph target", "One frame of vertex positions").Group =
        kTypeGroup;
    b.Section("Frames", 0);
    b.Add(ec::PredefinedFrames, ControlKind::Check, "Use predefined Maya frames",
          "Sample the animation at its key frames");
    b.NextRow().Add(ec::Smooth, ControlKind::Check, "Smooth animation with",
                    "Sample the animation at this many evenly spaced frames");
    b.Add(ec::SmoothFrames, ControlKind::Edit, "").Suffix = "frames";
    b.NextRow().Add(ec::UseRange, ControlKind::Check, "Use range in animation:",
                    "Export only this part of the time line");
    b.Add(ec::RangeStart, ControlKind::Edit, "from");
    b.Add(ec::RangeEnd, ControlKind::Edit, "to");
    b.NextRow().Add(ec::Looped, ControlKind::Check, "Looped animation", "The last frame leads back to the first");
    b.Section("Motion", 1);
    b.Add(ec::MotionDelta, ControlKind::Check, "Extract motion delta",
          "Take the root's movement out of the animation so that the engine moves the model");
    b.NextRow().Add(ec::MoveX, ControlKind::Check, "Extract X movement");
    b.NextRow().Add(ec::MoveY, ControlKind::Check, "Extract Y movement");
    b.NextRow().Add(ec::MoveZ, ControlKind::Check, "Extract Z movement");
    b.NextRow().Add(ec::NoRotation, ControlKind::Radio, "Don't extract rotation").Group = kRotationGroup;
    b.NextRow().Add(ec::RotationX, ControlKind::Radio, "Extract rotation around X").Group = kRotationGroup;
    b.NextRow().Add(ec::RotationY, ControlKind::Radio, "Extract rotation around Y").Group = kRotationGroup;
    b.NextRow().Add(ec::RotationZ, ControlKind::Radio, "Extract rotation around Z").Group = kRotationGroup;
    b.NextRow().Add(ec::Compensate, ControlKind::Check, "Compensate initial rotation and position");
    b.Section("", 0, false, true);
    b.Add(kIdOk, ControlKind::Button, "OK");
    b.Add(kIdCancel, ControlKind::Button, "Cancel");
    b.Add(ec::Frames, ControlKind::Button, "Frames", "Show the key frames sampled at the last export");
    if (!adding)
        b.Add(ec::Delete, ControlKind::Button, "Delete", "Remove this animation from the list");
    return b.Build();
}

} // namespace

AnimationEntryDialog::AnimationEntryDialog(Purpose purpose, VAnimationDescription& entry, VMessageBox& messageBox,
                                           VDialogView* view, bool toolTips)
    : Dialog(EntryLayout(purpose))
    , m_entry(entry)
    , m_messageBox(messageBox)
    , m_view(view)
    , m_toolTips(toolTips)
{
}

void AnimationEntryDialog::Open()
{
    const VAnimationDescription& entry = m_entry;
    ShowToolTips(m_toolTips);
    SetText(ec::Name, entry.Name);
    const int type = entry.Type == kAnimTypeBone ? ec::Bone : entry.Type == kAnimTypeMorphTarget ? ec::MorphTarget
                                                                                                 : ec::Muscle;
    CheckRadio(type);
    SetChecked(ec::Compress, entry.Compressed);
    SetChecked(ec::PredefinedFrames, entry.UseMaxFrames != 0);
    SetChecked(ec::Smooth, entry.Frames > 0);
    SetText(ec::SmoothFrames, Format("%d", entry.Frames));
    SetChecked(ec::UseRange, entry.UseRange != 0);
    SetText(ec::RangeStart, Format("%d", entry.RangeStart));
    SetText(ec::RangeEnd, Format("%d", entry.RangeEnd));
    SetChecked(ec::Looped, entry.Looped != 0);
    SetChecked(ec::MotionDelta, entry.MotionDelta != 0);
    SetChecked(ec::MoveX, entry.MoveX != 0);
    SetChecked(ec::MoveY, entry.MoveY != 0);
    SetChecked(ec::MoveZ, entry.MoveZ != 0);
    const size_t axis = entry.RotationAxis >= 0 && entry.RotationAxis <= 3 ? static_cast<size_t>(entry.RotationAxis) : 0;
    CheckRadio(kRotationButtons[axis]);
    SetChecked(ec::Compensate, entry.CompensateRotation != 0 || entry.CompensateOffset != 0);
    EnableByType();
    Enable(ec::RangeStart, Checked(ec::UseRange));
    Enable(ec::RangeEnd, Checked(ec::UseRange));
    SetFocus(ec::Name);
}

void AnimationEntryDialog::EnableByType()
{
    const bool morph = IsMorphTarget();
    Enable(ec::Compress, Checked(ec::Bone));
    for (int id : {ec::Looped, ec::Smooth, ec::PredefinedFrames, ec::MotionDelta})
        Enable(id, !morph);
    EnableSmoothFrames();
    EnableMotionControls();
}

void AnimationEntryDialog::EnableMotionControls()
{
    const bool enabled = !IsMorphTarget() && Checked(ec::MotionDelta);
    for (int id : kMotionControls)
        Enable(id, enabled);
}

void AnimationEntryDialog::EnableSmoothFrames()
{
    Enable(ec::SmoothFrames, !IsMorphTarget() && Checked(ec::Smooth) && !Checked(ec::PredefinedFrames));
}

void AnimationEntryDialog::Command(int id)
{
    switch (id) {
    case kIdOk:
        Confirm();
        break;
    case kIdCancel:
        End(kEntryCancelled);
        break;
    case ec::Delete:
        End(kEntryDeleted);
        break;
    case ec::MorphTarget:
        // A morph target is one frame: its range starts and ends there.
        SetText(ec::RangeEnd, Text(ec::RangeStart));
        EnableByType();
        break;
    case ec::Bone:
    case ec::Muscle:
        EnableByType();
        break;
    case ec::RangeStart:
        if (IsMorphTarget())
            SetText(ec::RangeEnd, Text(ec::RangeStart));
        break;
    case ec::RangeEnd:
        if (IsMorphTarget())
            SetText(ec::RangeStart, Text(ec::RangeEnd));
        break;
    case ec::MotionDelta:
        EnableMotionControls();
        break;
    case ec::UseRange:
        Enable(ec::RangeStart, Checked(ec::UseRange));
        Enable(ec::RangeEnd, Checked(ec::UseRange));
        break;
    case ec::Smooth:
    case ec::PredefinedFrames:
        EnableSmoothFrames();
        break;
    case ec::Frames: {
        KeyFramesDialog frames(m_entry);
        RunDialog(frames, m_view, UnseenDialog::Cancels);
        break;
    }
    default:
        break;
    }
}

bool AnimationEntryDialog::Refuse(int focus, const char* text)
{
    VMessageBoxRequest request;
    request.Caption = "Error";
    request.Text = text;
    request.Icon = VMessageBoxIcon::Error;
    request.Owner = VMessageBoxOwner::ActiveWindow;
    m_messageBox.Show(request);
    SetFocus(focus);
    return false;
}

void AnimationEntryDialog::Confirm()
{
    VAnimationDescription entry = m_entry;
    const bool morph = IsMorphTarget();

    entry.Name = std::string(TrimSpaces(Text(ec::Name)));
    if (entry.Name.empty()) {
        Refuse(ec::Name, "Please enter a valid animation name");
        return;
    }

    if (morph) {
        entry.Frames = 1;
    } else if (Checked(ec::PredefinedFrames)) {
        entry.Frames = 0;
        entry.UseMaxFrames = 1;
    } else {
        entry.UseMaxFrames = 0;
        entry.Frames = 0;
        if (Checked(ec::Smooth)) {
            if (!ReadDialogInt(Text(ec::SmoothFrames), entry.Frames) || entry.Frames < 1) {
                Refuse(ec::SmoothFrames, "Please smooth the animation with 1 frame or more");
                return;
            }
        }
    }

    entry.MotionDelta = Checked(ec::MotionDelta) ? 1 : 0;
    entry.CompensateRotation = entry.CompensateOffset = Checked(ec::Compensate) ? 1 : 0;
    entry.MoveX = Checked(ec::MoveX) ? 1 : 0;
    entry.MoveY = Checked(ec::MoveY) ? 1 : 0;
    entry.MoveZ = Checked(ec::MoveZ) ? 1 : 0;
    entry.RotationAxis = 0;
    for (size_t axis = 0; axis < kRotationButtons.size(); ++axis) {
        if (Checked(kRotationButtons[axis]))
            entry.RotationAxis = static_cast<int32_t>(axis);
    }

    entry.UseRange = Checked(ec::UseRange) ? 1 : 0;
    if (entry.UseRange) {
        if (!ReadDialogInt(Text(ec::RangeStart), entry.RangeStart) || entry.RangeStart < 0) {
            Refuse(ec::RangeStart, "The range must start at frame 0 or later");
            return;
        }
        if (!ReadDialogInt(Text(ec::RangeEnd), entry.RangeEnd) || entry.RangeEnd < entry.RangeStart) {
            Refuse(ec::RangeEnd, "The range must not end before it starts");
            return;
        }
    }

    entry.Looped = Checked(ec::Looped) && !morph ? 1 : 0;
    entry.Type = Checked(ec::Bone) ? kAnimTypeBone : morph ? kAnimTypeMorphTarget : kAnimTypeMuscle;
    entry.Compressed = Checked(ec::Compress);
    m_entry = std::move(entry);
    End(kEntryConfirmed);
}

int EditAnimationEntry(AnimationEntryDialog::Purpose purpose, VAnimationDescription& entry, VMessageBox& messageBox,
                       VDialogView* view, bool toolTips)
{
    AnimationEntryDialog dialog(purpose, entry, messageBox, view, toolTips);
    return RunDialog(dialog, view, UnseenDialog::Cancels);
}
