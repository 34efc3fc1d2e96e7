#include "ui/qt/QtDialogWindow.h"

#include <QCheckBox>
#include <QComboBox>
#include <QGridLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QScrollBar>
#include <QTableWidget>

#include <algorithm>

namespace {

QString ToQt(const std::string& text)
{
    return QString::fromStdString(text);
}

void SetItems(QListWidget& list, const ControlState& state, bool checkable)
{
    const bool same = list.count() == static_cast<int>(state.Items.size());
    if (!same) {
        list.clear();
        for (const std::string& item : state.Items)
            list.addItem(ToQt(item));
    }
    for (int row = 0; row < list.count(); ++row) {
        QListWidgetItem& item = *list.item(row);
        item.setText(ToQt(state.Items[row]));
        if (checkable) {
            item.setFlags(item.flags() | Qt::ItemIsUserCheckable);
            const bool checked = row < static_cast<int>(state.ItemChecks.size()) && state.ItemChecks[row];
            item.setCheckState(checked ? Qt::Checked : Qt::Unchecked);
        }
    }
    list.setCurrentRow(state.Selection);
}

void SetRows(QTableWidget& table, const ControlState& state)
{
    int columns = table.columnCount();
    for (const std::vector<Cell>& row : state.Rows)
        columns = std::max(columns, static_cast<int>(row.size()));
    table.setColumnCount(columns);
    table.setRowCount(static_cast<int>(state.Rows.size()));
    for (int row = 0; row < table.rowCount(); ++row) {
        for (int column = 0; column < static_cast<int>(state.Rows[row].size()); ++column) {
            const Cell& cell = state.Rows[row][column];
            auto* item = new QTableWidgetItem(ToQt(cell.Text));
            item->setFlags(Qt::ItemIsEnabled | Qt::ItemIsSelectable);
            item->setForeground(QColor(cell.Colour.Red, cell.Colour.Green, cell.Colour.Blue));
            table.setItem(row, column, item);
        }
    }
    if (table.selectionMode() != QAbstractItemView::NoSelection)
        table.selectRow(state.Selection);
}

} // namespace

QtDialogWindow::QtDialogWindow(Dialog& dialog, QWidget* parent)
    : QDialog(parent)
    , m_dialog(dialog)
{
    setWindowTitle(ToQt(dialog.Layout().Caption));
    setObjectName(QString::number(dialog.Layout().Resource));
    Build();
    Refresh();
}

QWidget* QtDialogWindow::Control(int id) const
{
    const auto found = m_controls.find(id);
    return found == m_controls.end() ? nullptr : found->second;
}

void QtDialogWindow::reject()
{
    Send(kIdCancel);
}

void QtDialogWindow::Build()
{
    const DialogLayout& layout = m_dialog.Layout();
    auto* outer = new QGridLayout(this);
    std::vector<QGridLayout*> grids;
    // Sections stack in their column; a full-width one starts below everything above it.
    std::map<int, int> nextRow;
    int columns = 1;
    for (const SectionSpec& section : layout.Sections)
        columns = std::max(columns, section.Column + 1);
    for (size_t index = 0; index < layout.Sections.size(); ++index) {
        const SectionSpec& section = layout.Sections[index];
        auto* box = new QGroupBox(ToQt(section.Title), this);
        if (section.Title.empty())
            box->setFlat(true);
        grids.push_back(new QGridLayout(box));
        if (section.FullWidth) {
            int row = 0;
            for (const auto& [column, next] : nextRow)
                row = std::max(row, next);
            outer->addWidget(box, row, 0, 1, columns);
            for (int column = 0; column < columns; ++column)
                nextRow[column] = row + 1;
        } else {
            outer->addWidget(box, nextRow[section.Column]++, section.Column);
        }
        if (section.Advanced)
            m_advancedSections[static_cast<int>(index)] = box;
    }

    QWidget* previous = nullptr;
    for (const ControlSpec& definition : layout.Controls) {
        QWidget* control = MakeControl(definition);
        control->setObjectName(QString::number(definition.Id));
        m_controls[definition.Id] = control;

        auto* cell = new QHBoxLayout;
        const bool labelled = !definition.Label.empty() && definition.Kind != ControlKind::Label && definition.Kind != ControlKind::Check &&
                              definition.Kind != ControlKind::Radio && definition.Kind != ControlKind::Button;
        if (labelled) {
            auto* label = new QLabel(ToQt(definition.Label), this);
            label->setBuddy(control);
            cell->addWidget(label);
            m_companions.emplace(definition.Id, label);
        }
        cell->addWidget(control, 1);
        if (!definition.Suffix.empty()) {
            auto* suffix = new QLabel(ToQt(definition.Suffix), this);
            cell->addWidget(suffix);
            m_companions.emplace(definition.Id, suffix);
        }
        grids.at(definition.Section)->addLayout(cell, definition.Row, definition.Column, definition.RowSpan, definition.ColumnSpan);

        if (control->focusPolicy() != Qt::NoFocus) {
            if (previous)
                setTabOrder(previous, control);
            previous = control;
        }
    }
}

QWidget* QtDialogWindow::MakeControl(const ControlSpec& definition)
{
    const int id = definition.Id;
    switch (definition.Kind) {
    case ControlKind::Label:
    case ControlKind::Value: {
        auto* label = new QLabel(this);
        label->setTextInteractionFlags(definition.Kind == ControlKind::Value ? Qt::TextSelectableByMouse : Qt::NoTextInteraction);
        return label;
    }
    case ControlKind::Edit: {
        auto* edit = new QLineEdit(this);
        // Room for the widest number the dialogs write ("%3.3f" of a large factor).
        edit->setMinimumWidth(edit->fontMetrics().horizontalAdvance(QStringLiteral("00000.000")));
        connect(edit, &QLineEdit::textEdited, this, [this, id](const QString& text) {
            m_dialog[id].Text = text.toStdString();
            Send(id);
        });
        return edit;
    }
    case ControlKind::MultiLine: {
        auto* text = new QPlainTextEdit(this);
        text->setReadOnly(true);
        return text;
    }
    case ControlKind::Check: {
        auto* check = new QCheckBox(ToQt(definition.Label), this);
        connect(check, &QCheckBox::clicked, this, [this, id](bool checked) {
            m_dialog[id].Checked = checked;
            Send(id);
        });
        return check;
    }
    case ControlKind::Radio: {
        auto* radio = new QRadioButton(ToQt(definition.Label), this);
        // The dialog keeps its groups exclusive; Qt's own grouping would follow the parent widget.
        radio->setAutoExclusive(false);
        connect(radio, &QRadioButton::clicked, this, [this, id] {
            m_dialog.CheckRadio(id);
            Send(id);
        });
        return radio;
    }
    case ControlKind::Combo: {
        auto* combo = new QComboBox(this);
        connect(combo, &QComboBox::activated, this, [this, id](int index) {
            m_dialog[id].Selection = index;
            Send(id);
        });
        return combo;
    }
    case ControlKind::List:
    case ControlKind::CheckList: {
        auto* list = new QListWidget(this);
        connect(list, &QListWidget::currentRowChanged, this, [this, id](int row) {
            if (m_refreshing)
                return;
            m_dialog[id].Selection = row;
            Send(id);
        });
        connect(list, &QListWidget::itemChanged, this, [this, id, list](QListWidgetItem* item) {
            if (m_refreshing)
                return;
            std::vector<bool>& checks = m_dialog[id].ItemChecks;
            const size_t row = static_cast<size_t>(list->row(item));
            checks.resize(std::max(checks.size(), row + 1));
            checks[row] = item->checkState() == Qt::Checked;
            Send(id);
        });
        return list;
    }
    case ControlKind::Button: {
        auto* button = new QPushButton(ToQt(definition.Label), this);
        button->setAutoDefault(false);
        button->setDefault(id == kIdOk);
        connect(button, &QPushButton::clicked, this, [this, id] { Send(id); });
        return button;
    }
    case ControlKind::Table:
    case ControlKind::Painted: {
        auto* table = new QTableWidget(this);
        table->verticalHeader()->hide();
        table->setEditTriggers(QAbstractItemView::NoEditTriggers);
        table->setColumnCount(static_cast<int>(definition.Columns.size()));
        for (size_t column = 0; column < definition.Columns.size(); ++column)
            table->setHorizontalHeaderItem(static_cast<int>(column), new QTableWidgetItem(ToQt(definition.Columns[column])));
        table->horizontalHeader()->setVisible(!definition.Columns.empty());
        table->horizontalHeader()->setStretchLastSection(true);
        if (definition.Kind == ControlKind::Painted) {
            table->setSelectionMode(QAbstractItemView::NoSelection);
            table->setFocusPolicy(Qt::NoFocus);
        } else {
            table->setSelectionMode(QAbstractItemView::SingleSelection);
            table->setSelectionBehavior(QAbstractItemView::SelectRows);
            connect(table, &QTableWidget::currentCellChanged, this, [this, id](int row) {
                if (m_refreshing)
                    return;
                m_dialog[id].Selection = row;
                Send(id);
            });
        }
        return table;
    }
    case ControlKind::ScrollBar: {
        auto* bar = new QScrollBar(Qt::Vertical, this);
        connect(bar, &QScrollBar::valueChanged, this, [this, id](int position) {
            if (m_refreshing)
                return;
            m_dialog[id].Position = position;
            Send(id);
        });
        return bar;
    }
    }
    return new QWidget(this);
}

void QtDialogWindow::Send(int id)
{
    if (m_dialog.Ended())
        return;
    m_dialog.Command(id);
    Refresh();
}

void QtDialogWindow::Refresh()
{
    m_refreshing = true;
    for (const ControlSpec& definition : m_dialog.Layout().Controls)
        RefreshControl(definition, m_controls.at(definition.Id));
    bool resized = false;
    for (const auto& [index, box] : m_advancedSections) {
        resized = resized || box->isHidden() == m_dialog.Expanded();
        box->setVisible(m_dialog.Expanded());
    }
    if (resized)
        adjustSize();
    if (const int focus = m_dialog.Focus()) {
        if (QWidget* control = Control(focus))
            control->setFocus(Qt::OtherFocusReason);
        // Handed to the widget once; the user moves it on from there.
        m_dialog.SetFocus(0);
    }
    m_refreshing = false;
    if (m_dialog.Ended())
        done(m_dialog.Result());
}

void QtDialogWindow::RefreshControl(const ControlSpec& definition, QWidget* widget)
{
    const ControlState& state = m_dialog[definition.Id];
    switch (definition.Kind) {
    case ControlKind::Label:
    case ControlKind::Value:
        static_cast<QLabel*>(widget)->setText(ToQt(state.Text));
        break;
    case ControlKind::Edit: {
        auto* edit = static_cast<QLineEdit*>(widget);
        if (edit->text().toStdString() != state.Text)
            edit->setText(ToQt(state.Text));
        break;
    }
    case ControlKind::MultiLine:
        static_cast<QPlainTextEdit*>(widget)->setPlainText(ToQt(state.Text));
        break;
    case ControlKind::Check:
    case ControlKind::Radio: {
        auto* button = static_cast<QAbstractButton*>(widget);
        button->setText(ToQt(state.Text));
        button->setChecked(state.Checked);
        break;
    }
    case ControlKind::Button:
        static_cast<QPushButton*>(widget)->setText(ToQt(state.Text));
        break;
    case ControlKind::Combo: {
        auto* combo = static_cast<QComboBox*>(widget);
        QStringList items;
        for (const std::string& item : state.Items)
            items << ToQt(item);
        QStringList shown;
        for (int index = 0; index < combo->count(); ++index)
            shown << combo->itemText(index);
        if (shown != items) {
            combo->clear();
            combo->addItems(items);
        }
        combo->setCurrentIndex(state.Selection);
        break;
    }
    case ControlKind::List:
    case ControlKind::CheckList:
        SetItems(*static_cast<QListWidget*>(widget), state, definition.Kind == ControlKind::CheckList);
        break;
    case ControlKind::Table:
    case ControlKind::Painted:
        SetRows(*static_cast<QTableWidget*>(widget), state);
        break;
    case ControlKind::ScrollBar: {
        auto* bar = static_cast<QScrollBar*>(widget);
        bar->setRange(state.Minimum, state.Maximum);
        bar->setValue(state.Position);
        break;
    }
    }
    widget->setEnabled(state.Enabled);
    widget->setVisible(state.Visible);
    widget->setToolTip(m_dialog.ToolTipsShown() ? ToQt(definition.ToolTip) : QString());
    const auto [first, last] = m_companions.equal_range(definition.Id);
    for (auto companion = first; companion != last; ++companion) {
        companion->second->setEnabled(state.Enabled);
        companion->second->setVisible(state.Visible);
    }
}
