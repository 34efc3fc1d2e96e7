#pragma once
// Writing a dialog's layout row by row: each call places one control in the current section,
// in tab order.

#include "ui/Dialog.h"

#include <string>

class DialogLayoutBuilder {
public:
    DialogLayoutBuilder(int resource, std::string caption);

    // Starts a section; the controls added next go into it, from row 0.
    DialogLayoutBuilder& Section(std::string title, int column, bool advanced = false, bool fullWidth = false);
    // Moves on to the next row of the section.
    DialogLayoutBuilder& NextRow();
    // Places the control in the next column of the current row.
    ControlSpec& Add(int id, ControlKind kind, std::string label, std::string toolTip = {});

    DialogLayout Build() { return std::move(m_layout); }

private:
    DialogLayout m_layout;
    int m_row = 0;
    int m_column = 0;
};
