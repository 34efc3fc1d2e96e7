#include "ui/DialogLayoutBuilder.h"

DialogLayoutBuilder::DialogLayoutBuilder(int resource, std::string caption)
{
    m_layout.Resource = resource;
    m_layout.Caption = std::move(caption);
}

DialogLayoutBuilder& DialogLayoutBuilder::Section(std::string title, int column, bool advanced, bool fullWidth)
{
    m_layout.Sections.push_back(SectionSpec {std::move(title), column, advanced, fullWidth});
    m_row = 0;
    m_column = 0;
    return *this;
}

DialogLayoutBuilder& DialogLayoutBuilder::NextRow()
{
    ++m_row;
    m_column = 0;
    return *this;
}

ControlSpec& DialogLayoutBuilder::Add(int id, ControlKind kind, std::string label, std::string toolTip)
{
    ControlSpec definition;
    definition.Id = id;
    definition.Kind = kind;
    definition.Label = std::move(label);
    definition.Section = static_cast<int>(m_layout.Sections.size()) - 1;
    definition.Row = m_row;
    definition.Column = m_column++;
    definition.ToolTip = std::move(toolTip);
    m_layout.Controls.push_back(std::move(definition));
    return m_layout.Controls.back();
}
