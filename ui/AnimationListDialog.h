#pragma once
// "Adding animations": the animation table as a list of at most 17 visible rows, each with a
// number button that opens the entry for editing, a scroll bar once there are more entries, and
// "Add from current file" for a new entry.

#include "ui/Dialog.h"

class VAnimationTable;
class VDialogView;
class VMessageBox;

namespace ListControl {
// The number button of visible row r is FirstNumber + r.
inline constexpr int FirstNumber = 100;
inline constexpr int Add = 1140;
inline constexpr int ScrollBar = 1200;
inline constexpr int Rows = 1201;
} // namespace ListControl

inline constexpr int kVisibleAnimationRows = 17;

class AnimationListDialog final : public Dialog {
public:
    AnimationListDialog(VAnimationTable& animations, VMessageBox& messageBox, VDialogView* view, bool toolTips);

    void Open() override;
    // The scroll bar's command takes its Position as the first visible entry.
    void Command(int id) override;

    int FirstVisible() const { return m_first; }

private:
    void AddEntry();
    void EditEntry(int row);
    // Number buttons, scroll bar and painted rows from the table and the first visible entry.
    void Refresh();

    VAnimationTable& m_animations;
    VMessageBox& m_messageBox;
    VDialogView* m_view;
    bool m_toolTips;
    int m_first = 0;
};

// Compares every pair of names, ignoring case. At the first equal pair it names it in a message
// box and answers false.
bool CheckAnimationNames(const VAnimationTable& animations, VMessageBox& messageBox);
