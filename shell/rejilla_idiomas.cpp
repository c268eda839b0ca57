#include "shell/rejilla_idiomas.h"

#include <QEvent>
#include <QHeaderView>
#include <QKeyEvent>
#include <QScrollBar>
#include <QStyledItemDelegate>

#include <algorithm>
#include <utility>

#include "controls/tintas.h"

namespace {

constexpr int FEW_LANGUAGES = 4;                        // share the width; more are scrolled
constexpr int NARROWEST = 14, USUAL = 26, NUMBERS = 5;  // characters
constexpr int PADDING = 12;
constexpr int ROWS_SHOWN = 16, FEWEST_ROWS = 3;
constexpr int LANGUAGES_SHOWN = 7;  // where the screen has room
constexpr double TINT = 0.14;
const QString SIGN = QStringLiteral("\u26A0 ");

QColor mixed(const QColor& a, const QColor& b, double part) {
    const auto channel = [&](int x, int y) { return static_cast<int>(x + (y - x) * part); };
    return {channel(a.red(), b.red()), channel(a.green(), b.green()), channel(a.blue(), b.blue())};
}

/// Tints what is wrong and puts a sign before it.
class PintorDeFallos final : public QStyledItemDelegate {
public:
    using QStyledItemDelegate::QStyledItemDelegate;

protected:
    void initStyleOption(QStyleOptionViewItem* option, const QModelIndex& index) const override {
        QStyledItemDelegate::initStyleOption(option, index);
        if (index.data(ModeloIdiomas::FAULTS).toInt() == 0)
            return;
        const QColor ink = fault_ink(option->palette);
        option->text.prepend(SIGN);
        option->features |= QStyleOptionViewItem::HasDisplay;
        option->palette.setColor(QPalette::Text, ink);
        option->backgroundBrush = mixed(option->palette.color(QPalette::Base), ink, TINT);
    }
};

}  // namespace

RejillaIdiomas::RejillaIdiomas(ModeloIdiomas* modelo, QWidget* padre) : QTableView(padre) {
    setModel(modelo);
    setItemDelegate(new PintorDeFallos(this));
    setColumnHidden(0, true);  // the header of the rows shows the numbers and stays where it is
    setEditTriggers(QAbstractItemView::NoEditTriggers);
    setTabKeyNavigation(false);
    setWordWrap(false);
    setAlternatingRowColors(true);
    setHorizontalScrollMode(QAbstractItemView::ScrollPerPixel);
    setVerticalScrollMode(QAbstractItemView::ScrollPerPixel);
    verticalHeader()->setSectionResizeMode(QHeaderView::Fixed);
    verticalHeader()->setHighlightSections(false);
    horizontalHeader()->setHighlightSections(false);
    horizontalHeader()->setDefaultAlignment(Qt::AlignLeft | Qt::AlignVCenter);
    connect(horizontalHeader(), &QHeaderView::sectionResized, this, &RejillaIdiomas::moved);
    connect(modelo, &QAbstractItemModel::columnsInserted, this, &RejillaIdiomas::spread);
    connect(modelo, &QAbstractItemModel::columnsRemoved, this, &RejillaIdiomas::spread);
    fit_rows();
    spread();
}

void RejillaIdiomas::fit_rows() {
    verticalHeader()->setDefaultSectionSize(fontMetrics().height() + 8);
    verticalHeader()->setFixedWidth(width_of(NUMBERS));
}

int RejillaIdiomas::width_of(int characters) const {
    return characters * fontMetrics().averageCharWidth() + PADDING;
}

void RejillaIdiomas::spread() {
    const int languages = model()->columnCount() - 1;
    if (languages < 1)
        return;
    const int width =
        languages <= FEW_LANGUAGES ? std::max(width_of(NARROWEST), viewport()->width() / languages) : width_of(USUAL);
    for (int column = 1; column <= languages; ++column)
        setColumnWidth(column, width);
    updateGeometries();  // now, so that a new column can be scrolled to
}

void RejillaIdiomas::choose(const QModelIndex& index) {
    selectionModel()->setCurrentIndex(index, QItemSelectionModel::ClearAndSelect);
}

QModelIndexList RejillaIdiomas::block() const {
    QModelIndexList cells = selectionModel()->selectedIndexes();
    cells.removeIf([](const QModelIndex& index) { return index.column() == 0; });
    if (cells.isEmpty() && currentIndex().isValid() && currentIndex().column() > 0)
        cells << currentIndex();
    std::sort(cells.begin(), cells.end());
    return cells;
}

bool RejillaIdiomas::runs_command(const QKeyEvent& event) {
    const auto asked = [&](QKeySequence::StandardKey key, void (RejillaIdiomas::*signal)()) {
        const bool meant = event.matches(key);
        if (meant)
            (this->*signal)();
        return meant;
    };
    return asked(QKeySequence::Copy, &RejillaIdiomas::copy_requested) ||
           asked(QKeySequence::Paste, &RejillaIdiomas::paste_requested) ||
           asked(QKeySequence::Delete, &RejillaIdiomas::clear_requested) ||
           asked(QKeySequence::Undo, &RejillaIdiomas::undo_requested) ||
           asked(QKeySequence::Redo, &RejillaIdiomas::redo_requested);
}

void RejillaIdiomas::keyPressEvent(QKeyEvent* event) {
    if (runs_command(*event))
        return;
    const bool edits = event->key() == Qt::Key_F2 || event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter;
    const bool command = (event->modifiers() & (Qt::ControlModifier | Qt::AltModifier | Qt::MetaModifier)) != 0;
    const bool types = !command && !event->text().isEmpty() && event->text().front().isPrint();
    if (currentIndex().isValid() && (edits || types))
        emit edit_requested(currentIndex(), edits ? QString() : event->text());
    else
        QTableView::keyPressEvent(event);
}

void RejillaIdiomas::resizeEvent(QResizeEvent* event) {
    QTableView::resizeEvent(event);
    if (model()->columnCount() - 1 <= FEW_LANGUAGES)
        spread();
    emit moved();
}

void RejillaIdiomas::scrollContentsBy(int dx, int dy) {
    QTableView::scrollContentsBy(dx, dy);
    emit moved();
}

void RejillaIdiomas::changeEvent(QEvent* event) {
    QTableView::changeEvent(event);
    if (event->type() == QEvent::FontChange) {
        fit_rows();
        spread();
    }
}

QSize RejillaIdiomas::sizeHint() const {
    const int languages = std::clamp(model()->columnCount() - 1, 1, LANGUAGES_SHOWN);
    return {
        width_of(NUMBERS) + languages * width_of(USUAL) + verticalScrollBar()->sizeHint().width() + 2 * frameWidth(),
        horizontalHeader()->sizeHint().height() + ROWS_SHOWN * verticalHeader()->defaultSectionSize() +
            2 * frameWidth()};
}

QSize RejillaIdiomas::minimumSizeHint() const {
    return {width_of(NUMBERS) + 2 * width_of(NARROWEST), horizontalHeader()->sizeHint().height() +
                                                             FEWEST_ROWS * verticalHeader()->defaultSectionSize() +
                                                             2 * frameWidth()};
}
