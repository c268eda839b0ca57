#include "controls/lista_gases.h"

#include <QAbstractItemView>
#include <QCompleter>
#include <QHelpEvent>
#include <QLineEdit>
#include <QListView>
#include <QSignalBlocker>
#include <QToolTip>
#include <QWheelEvent>

ListaGases::ListaGases(QAbstractItemModel* names, QWidget* padre) : QComboBox(padre) {
    setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);  // does not measure every name
    setMinimumContentsLength(20);
    setMaxVisibleItems(15);
    auto* list = new QListView(this);
    list->setUniformItemSizes(true);
    list->setMinimumWidth(fontMetrics().averageCharWidth() * 40);  // whole names, though the list is narrow
    setView(list);
    setEditable(true);
    setInsertPolicy(QComboBox::NoInsert);
    setCompleter(nullptr);
    setModel(names);
    setCurrentIndex(-1);
    connect(lineEdit(), &QLineEdit::editingFinished, this, &ListaGases::settle);
}

void ListaGases::set_silently(int index) {
    const QSignalBlocker silent(this);
    setCurrentIndex(index);
    lineEdit()->setText(itemText(index));
    lineEdit()->setCursorPosition(0);
}

bool ListaGases::event(QEvent* event) {
    if (event->type() != QEvent::ToolTip)
        return QComboBox::event(event);
    const QString about_gas = itemData(currentIndex(), Qt::ToolTipRole).toString();
    if (about_gas.isEmpty())
        return QComboBox::event(event);
    QToolTip::showText(static_cast<QHelpEvent*>(event)->globalPos(), about_gas + u'\n' + toolTip(), this);
    return true;
}

void ListaGases::focusInEvent(QFocusEvent* event) {
    if (!completer())
        make_completer();
    QComboBox::focusInEvent(event);
}

void ListaGases::make_completer() {
    auto* search = new QCompleter(model(), this);
    search->setFilterMode(Qt::MatchContains);
    search->setCaseSensitivity(Qt::CaseInsensitive);
    search->setMaxVisibleItems(15);
    search->popup()->setMinimumWidth(view()->minimumWidth());
    setCompleter(search);
}

void ListaGases::wheelEvent(QWheelEvent* event) {
    if (hasFocus() || lineEdit()->hasFocus())
        QComboBox::wheelEvent(event);
    else
        event->ignore();
}

void ListaGases::settle() {
    const QString typed = lineEdit()->text().trimmed();
    lineEdit()->setCursorPosition(0);  // a name begins with its formula
    if (typed == currentText() && typed == itemText(currentIndex()))
        return;
    int found = typed.isEmpty() ? -1 : findText(typed, Qt::MatchFixedString);
    if (found < 0 && !typed.isEmpty()) {
        const auto matches = model()->match(model()->index(0, modelColumn()), Qt::DisplayRole, typed, 2,
                                            Qt::MatchContains | Qt::MatchWrap);
        if (matches.size() == 1)
            found = matches.front().row();
    }
    if (found >= 0)
        setCurrentIndex(found);
    lineEdit()->setText(itemText(currentIndex()));
    lineEdit()->setCursorPosition(0);
}
