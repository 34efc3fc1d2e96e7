#include "ui/AnimationListDialog.h"

#include "base/TextUtil.h"
#include "report/DebugFile.h"
#include "settings/VAnimationTable.h"
#include "ui/AnimationEntryDialog.h"
#include "ui/DialogLayoutBuilder.h"
#include "ui/VMessageBox.h"

#include <algorithm>

namespace lc = ListControl;

namespace {

// The painted columns start where the number buttons end, 54 pixels into the dialog.
constexpr int kRowsLeft = 54;
constexpr Rgb kNameColour {240, 240, 50};
constexpr Rgb kBoneColour {255, 80, 40};
constexpr Rgb kMuscleColour {80, 255, 40};
constexpr Rgb kTargetColour {80, 224, 224};
constexpr Rgb kRangeColour {240, 200, 160};
constexpr Rgb kFramesColour {208, 255, 40};
constexpr Rgb kFileColour {255, 192, 60};

DialogLayout ListLayout()
{
    DialogLayoutBuilder b(113, "Adding animations");
    b.Section("", 0);
    for (int row = 0; row < kVisibleAnimationRows; ++row) {
        ControlSpec& number = b.Add(lc::FirstNumber + row, ControlKind::Button, "", "Edit or delete this animation");
        number.Row = row;
        number.Column = 0;
    }
    ControlSpec& rows = b.Add(lc::Rows, ControlKind::Painted, "");
    rows.Row = 0;
    rows.RowSpan = kVisibleAnimationRows;
    rows.Column = 1;
    rows.Columns = {"Name", "Type", "Range", "Frames", "File"};
    ControlSpec& scroll = b.Add(lc::ScrollBar, ControlKind::ScrollBar, "");
    scroll.Row = 0;
    scroll.RowSpan = kVisibleAnimationRows;
    scroll.Column = 2;
    b.Section("", 0);
    b.Add(lc::Add, ControlKind::Button, "Add from current file", "Add an animation from the scene's time line");
    b.Add(kIdOk, ControlKind::Button, "OK");
    return b.Build();
}

std::vector<Cell> PaintRow(const VAnimationDescription& entry)
{
    std::vector<Cell> cells;
    cells.push_back({entry.Name.substr(0, 31), kNameColour, 54 - kRowsLeft});
    if (entry.Type == kAnimTypeBone)
        cells.push_back({"Bone", kBoneColour, 314 - kRowsLeft});
    else if (entry.Type == kAnimTypeMuscle)
        cells.push_back({"Muscle", kMuscleColour, 314 - kRowsLeft});
    else if (entry.Type == kAnimTypeMorphTarget)
        cells.push_back({"Target", kTargetColour, 314 - kRowsLeft});
    if (entry.UseRange) {
        if (entry.Type == kAnimTypeMorphTarget)
            cells.push_back({Format("%d", entry.RangeStart), kRangeColour, 380 - kRowsLeft});
        else
            cells.push_back({Format("%d->%d", entry.RangeStart, entry.RangeEnd), kRangeColour, 370 - kRowsLeft});
    }
    if (entry.Frames > 0)
        cells.push_back({Format("%3d", entry.Frames), kFramesColour, 430 - kRowsLeft});
    cells.push_back({entry.SourceFile.substr(0, 40), kFileColour, 486 - kRowsLeft});
    return cells;
}

} // namespace

AnimationListDialog::AnimationListDialog(VAnimationTable& animations, VMessageBox& messageBox, VDialogView* view,
                                         bool toolTips)
    : Dialog(ListLayout())
    , m_animations(animations)
    , m_messageBox(messageBox)
    , m_view(view)
    , m_toolTips(toolTips)
{
}

void AnimationListDialog::Open()
{
    DebugPrint("AddAnimationDialogProc()\n");
    ShowToolTips(m_toolTips);
    m_first = 0;
    Refresh();
    SetFocus(lc::Add);
}

void AnimationListDialog::Refresh()
{
    const int count = m_animations.Count();
    const int lastFirst = std::max(count - kVisibleAnimationRows, 0);
    m_first = std::clamp(m_first, 0, lastFirst);

    ControlState& scroll = (*this)[lc::ScrollBar];
    scroll.Enabled = count > kVisibleAnimationRows;
    scroll.Minimum = 0;
    scroll.Maximum = scroll.Enabled ? lastFirst : 0;
    scroll.Position = m_first;

    ControlState& rows = (*this)[lc::Rows];
    rows.Rows.clear();
    for (int row = 0; row < kVisibleAnimationRows; ++row) {
        const int entry = m_first + row;
        const bool shown = entry < count;
        Show(lc::FirstNumber + row, shown);
        SetText(lc::FirstNumber + row, shown ? Format("%d", entry + 1) : std::string());
        if (shown)
            rows.Rows.push_back(PaintRow(m_animations[entry]));
    }
}

void AnimationListDialog::Command(int id)
{
    if (id == kIdOk || id == kIdCancel) {
        End(id == kIdOk ? 1 : 0);
    } else if (id == lc::Add) {
        AddEntry();
    } else if (id == lc::ScrollBar) {
        m_first = (*this)[lc::ScrollBar].Position;
        Refresh();
    } else if (id >= lc::FirstNumber && id < lc::FirstNumber + kVisibleAnimationRows) {
        EditEntry(id - lc::FirstNumber);
    }
}

void AnimationListDialog::AddEntry()
{
    if (m_animations.Count() >= VAnimationTable::kCapacity) {
        VMessageBoxRequest request;
        request.Caption = "Overflow";
        request.Text = "Too many Animations";
        m_messageBox.Show(request);
        return;
    }
    VAnimationDescription entry;
    entry.KeyFrameCount = 0;
    if (m_animations.Count() == 0) {
        entry.Name = "Reference";
    } else {
        entry.Name = "Anim";
        entry.SourceFile = m_animations[m_animations.Count() - 1].SourceFile;
    }
    if (EditAnimationEntry(AnimationEntryDialog::Purpose::Add, entry, m_messageBox, m_view, m_toolTips) !=
        kEntryConfirmed)
        return;
    if (m_animations.Count() == 0)
        entry.SourceFile = "[This file]";
    m_animations.Add(std::move(entry));
    Refresh();
}

void AnimationListDialog::EditEntry(int row)
{
    const int index = m_first + row;
    if (index >= m_animations.Count())
        return;
    const int answer =
        EditAnimationEntry(AnimationEntryDialog::Purpose::Edit, m_animations[index], m_messageBox, m_view, m_toolTips);
    if (answer == kEntryDeleted) {
        m_animations.Remove(index);
        Refresh();
    } else if (answer == kEntryConfirmed) {
        Refresh();
    }
}

bool CheckAnimationNames(const VAnimationTable& animations, VMessageBox& messageBox)
{
    for (int i = 0; i < animations.Count(); ++i) {
        for (int j = i + 1; j < animations.Count(); ++j) {
            if (!EqualsNoCase(animations[i].Name, animations[j].Name))
                continue;
            VMessageBoxRequest request;
            request.Caption = "Duplicate animation found";
            request.Text = Format("You have two animations named [%s].\nPlease, make sure that all animations\nhave "
                                  "unique names.\n",
                                  animations[i].Name.c_str());
            request.Buttons = VMessageBoxButtons::OkCancel;
            messageBox.Show(request);
            return false;
        }
    }
    return true;
}
