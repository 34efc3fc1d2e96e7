#pragma once
// A dialog as its behaviour sees it: controls addressed by id, as the Windows dialogs they stand
// for address theirs, each with the state a user sees (text, check, selection, enabled, shown).
// A dialog's logic derives from Dialog and answers commands; a view (ui/qt/, or none in batch
// use) draws the state, writes the user's input into it and hands each input on as a command.
// Nothing here knows a toolkit, so tests drive every dialog through the same calls a view makes.

#include <map>
#include <optional>
#include <string>
#include <vector>

enum class ControlKind {
    Label,      // static text; Text may be replaced while the dialog is open
    Value,      // read-only text, shown after its Label
    Edit,       // one line of text; Label before it, Suffix after it
    MultiLine,  // read-only text of several lines
    Check,
    Radio,      // exclusive within its Group
    Combo,      // drop-down list of Items
    List,       // list of Items, one selectable
    Button,
    CheckList,  // Items with a check box each
    Table,      // Rows of coloured Cells under the Columns headers, one row selectable
    Painted,    // Rows of coloured Cells drawn at given x positions, no selection
    ScrollBar,  // vertical, Minimum..Maximum
};

struct Rgb {
    int Red = 0;
    int Green = 0;
    int Blue = 0;
    bool operator==(const Rgb&) const = default;
};

struct Cell {
    std::string Text;
    Rgb Colour;
    // Painted rows: pixels from the left edge.
    int X = 0;
    bool operator==(const Cell&) const = default;
};

struct ControlSpec {
    int Id = 0;
    ControlKind Kind = ControlKind::Label;
    // The control's own text (check box, button, static text) or the label before an edit field,
    // combo box or list.
    std::string Label;
    // Where the view puts it: a section of the dialog and a cell of that section's grid.
    int Section = 0;
    int Row = 0;
    int Column = 0;
    int RowSpan = 1;
    int ColumnSpan = 1;
    // Radio buttons of one group exclude each other.
    int Group = 0;
    // Text after an edit field ("%", "frames").
    std::string Suffix;
    // Table headers.
    std::vector<std::string> Columns;
    std::string ToolTip;
};

struct SectionSpec {
    // A group box's title; empty for none.
    std::string Title;
    // Sections stack top to bottom within their column.
    int Column = 0;
    // Hidden while the dialog is collapsed.
    bool Advanced = false;
    // Spans the dialog's width between the two-column blocks of the other sections.
    bool FullWidth = false;
};

struct DialogLayout {
    // The dialog's resource number, kept so that views and tests can tell the dialogs apart.
    int Resource = 0;
    std::string Caption;
    std::vector<SectionSpec> Sections;
    // In tab order.
    std::vector<ControlSpec> Controls;
};

struct ControlState {
    std::string Text;
    bool Checked = false;
    int Selection = -1;
    std::vector<std::string> Items;
    std::vector<bool> ItemChecks;
    std::vector<std::vector<Cell>> Rows;
    int Minimum = 0;
    int Maximum = 0;
    int Position = 0;
    bool Enabled = true;
    bool Visible = true;
};

// The two ids every dialog shares, as Windows' IDOK and IDCANCEL.
inline constexpr int kIdOk = 1;
inline constexpr int kIdCancel = 2;

class Dialog {
public:
    explicit Dialog(DialogLayout layout);
    virtual ~Dialog() = default;

    Dialog(const Dialog&) = delete;
    Dialog& operator=(const Dialog&) = delete;

    const DialogLayout& Layout() const { return m_layout; }
    const ControlSpec& Definition(int id) const;

    // Fills the controls; the view calls it once before showing the dialog.
    virtual void Open() {}
    // The user acted on control id: clicked a button or changed a check box, radio button,
    // selection, text or scroll position (already written into the control's state). Closing the
    // window is the command kIdCancel.
    virtual void Command(int id) = 0;

    ControlState& operator[](int id);
    const ControlState& operator[](int id) const;

    bool Checked(int id) const { return (*this)[id].Checked; }
    void SetChecked(int id, bool checked) { (*this)[id].Checked = checked; }
    const std::string& Text(int id) const { return (*this)[id].Text; }
    void SetText(int id, std::string text) { (*this)[id].Text = std::move(text); }
    void Enable(int id, bool enabled) { (*this)[id].Enabled = enabled; }
    void Show(int id, bool visible) { (*this)[id].Visible = visible; }
    // Checks id and unchecks the other radio buttons of its group.
    void CheckRadio(int id);
    // The checked radio button among ids, or none.
    std::optional<int> CheckedRadio(std::initializer_list<int> ids) const;

    // Advanced sections are shown only while expanded.
    bool Expanded() const { return m_expanded; }
    void SetExpanded(bool expanded) { m_expanded = expanded; }
    // The control that has the keyboard focus; 0 leaves it to the view.
    int Focus() const { return m_focus; }
    void SetFocus(int id) { m_focus = id; }
    // Tool tips are shown only while on.
    bool ToolTipsShown() const { return m_toolTips; }
    void ShowToolTips(bool shown) { m_toolTips = shown; }

    bool Ended() const { return m_result.has_value(); }
    int Result() const { return m_result.value_or(0); }
    void End(int result) { m_result = result; }

private:
    DialogLayout m_layout;
    std::map<int, ControlState> m_controls;
    bool m_expanded = true;
    bool m_toolTips = true;
    int m_focus = 0;
    std::optional<int> m_result;
};
