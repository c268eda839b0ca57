#include "controls/rejilla.h"

#include <QAction>
#include <QClipboard>
#include <QCollator>
#include <QEvent>
#include <QGuiApplication>
#include <QHeaderView>
#include <QScopedValueRollback>
#include <QScrollBar>
#include <QSortFilterProxyModel>

#include <algorithm>
#include <cmath>
#include <numeric>
#include <set>

/// The rows in the order of a column; the table itself keeps its own.
class OrdenRejilla final : public QSortFilterProxyModel {
public:
    explicit OrdenRejilla(QObject* padre) : QSortFilterProxyModel(padre) {
        collator_.setNumericMode(true);  // C2H6 before C10H22
        collator_.setCaseSensitivity(Qt::CaseInsensitive);
    }

protected:
    bool lessThan(const QModelIndex& left, const QModelIndex& right) const override {
        const QVariant a = left.data(Rejilla::ORDER), b = right.data(Rejilla::ORDER);
        if (!a.isValid() || !b.isValid())  // a descending order asks the other way round
            return sortOrder() == Qt::AscendingOrder ? a.isValid() && !b.isValid() : !a.isValid() && b.isValid();
        if (a.typeId() == QMetaType::Double)
            return a.toDouble() < b.toDouble();
        return collator_.compare(a.toString(), b.toString()) < 0;
    }

private:
    QCollator collator_{QLocale(QLocale::Spanish)};  // whatever the user's locale is
};

namespace {

constexpr int PADDING = 20, LEAST_PADDING = 10, ROW_PADDING = 8;
constexpr int FEWEST_ROWS = 5, USUAL_ROWS = 20;
constexpr double WIDEST_NAME = 0.6;  // of the room
constexpr int SAMPLE = 200;          // rows measured for the width of a column
constexpr int LONGEST_NAMES = 60;

/// Small letters without accents.
QString folded(const QString& text) {
    QString plain;
    for (const QChar c : text.normalized(QString::NormalizationForm_D)) {
        if (c.category() != QChar::Mark_NonSpacing)
            plain += c;
    }
    return plain.toCaseFolded();
}

QHeaderView* prepare(QTableView* view) {
    view->setEditTriggers(QAbstractItemView::NoEditTriggers);
    view->setAlternatingRowColors(true);
    view->setWordWrap(false);
    view->setTabKeyNavigation(false);  // the tab key goes on
    view->setHorizontalScrollMode(QAbstractItemView::ScrollPerPixel);
    view->setVerticalScrollMode(QAbstractItemView::ScrollPerPixel);
    view->setContextMenuPolicy(Qt::ActionsContextMenu);
    view->verticalHeader()->hide();
    view->verticalHeader()->setSectionResizeMode(QHeaderView::Fixed);  // measures no row
    QHeaderView* header = view->horizontalHeader();
    header->setHighlightSections(false);
    header->setSectionsClickable(true);
    header->setSortIndicatorClearable(true);
    header->setSortIndicatorShown(true);
    header->setSortIndicator(-1, Qt::AscendingOrder);
    return header;
}

}  // namespace

Rejilla::Rejilla(QAbstractItemModel* table, const QString& copy, QWidget* padre)
    : QTableView(padre), order_(new OrdenRejilla(this)), fixed_(new QTableView(this)) {
    order_->setSourceModel(table);
    setModel(order_);
    QHeaderView* header = prepare(this);
    setSortingEnabled(true);
    auto* copying = new QAction(copy, this);
    copying->setShortcut(QKeySequence::Copy);
    copying->setShortcutContext(Qt::WidgetShortcut);
    addAction(copying);
    connect(copying, &QAction::triggered, this, &Rejilla::copy);
    make_fixed_column(copying);
    connect(header, &QHeaderView::sectionResized, this, [this](int column, int, int width) {
        resized_by_hand_ = resized_by_hand_ || !spreading_;
        if (column == 0)
            fixed_->setColumnWidth(0, width);
        place_fixed_column();
    });
    connect(selectionModel(), &QItemSelectionModel::currentRowChanged, this, [this](const QModelIndex& now) {
        if (now.isValid())
            emit row_entered(order_->mapToSource(now).row());
    });
    const auto renewed = [this] {
        needs_.clear();
        spread();
    };
    connect(order_, &QAbstractItemModel::modelReset, this, renewed);
    connect(order_, &QAbstractItemModel::dataChanged, this, renewed);
    fit_rows();
}

// ---- The column that stays

void Rejilla::make_fixed_column(QAction* copying) {
    fixed_->setModel(order_);
    fixed_->setSelectionModel(selectionModel());
    QHeaderView* header = prepare(fixed_);
    header->setSectionResizeMode(QHeaderView::Fixed);
    fixed_->addAction(copying);
    fixed_->setFrameShape(QFrame::NoFrame);
    fixed_->setFocusProxy(this);
    fixed_->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    fixed_->setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    fixed_->hide();
    connect(verticalScrollBar(), &QScrollBar::valueChanged, fixed_->verticalScrollBar(), &QScrollBar::setValue);
    connect(fixed_->verticalScrollBar(), &QScrollBar::valueChanged, verticalScrollBar(), &QScrollBar::setValue);
    connect(horizontalHeader(), &QHeaderView::sortIndicatorChanged, header, &QHeaderView::setSortIndicator);
    connect(header, &QHeaderView::sortIndicatorChanged, horizontalHeader(), &QHeaderView::setSortIndicator);
}

void Rejilla::place_fixed_column() {
    const bool scrolled = horizontalScrollBar()->value() > 0;
    fixed_->setVisible(scrolled);
    if (!scrolled)
        return;
    for (int column = 1; column < order_->columnCount(); ++column)
        fixed_->setColumnHidden(column, true);
    fixed_->setColumnWidth(0, columnWidth(0));
    fixed_->horizontalHeader()->setFixedHeight(horizontalHeader()->height());
    fixed_->setGeometry(frameWidth(), frameWidth(), columnWidth(0),
                        viewport()->height() + horizontalHeader()->height());
    fixed_->verticalScrollBar()->setValue(verticalScrollBar()->value());
    fixed_->raise();
}

void Rejilla::scrollContentsBy(int dx, int dy) {
    QTableView::scrollContentsBy(dx, dy);
    if (dx != 0)
        place_fixed_column();
}

// ---- Widths and heights

void Rejilla::fit_rows() {
    for (QTableView* view : std::initializer_list<QTableView*>{this, fixed_})
        view->verticalHeader()->setDefaultSectionSize(fontMetrics().height() + ROW_PADDING);
}

/// Where all rows cannot be measured, the longest texts are the widest ones but for little.
int Rejilla::measured(int column) const {
    const auto width = [this](const QString& text) { return fontMetrics().horizontalAdvance(text); };
    const auto text = [this, column](int row) { return order_->index(row, column).data().toString(); };
    int widest = horizontalHeader()->sectionSizeHint(column) - PADDING;
    if (column > 0) {
        for (int row = 0; row < std::min(order_->rowCount(), SAMPLE); ++row)
            widest = std::max(widest, width(text(row)));
        return widest + PADDING;
    }
    QStringList names;
    for (int row = 0; row < order_->rowCount(); ++row)
        names << text(row);
    const auto shown = std::min<qsizetype>(names.size(), LONGEST_NAMES);
    std::partial_sort(names.begin(), names.begin() + shown, names.end(),
                      [](const QString& a, const QString& b) { return a.size() > b.size(); });
    for (const QString& name : names.first(shown))
        widest = std::max(widest, width(name));
    return widest + PADDING;
}

const std::vector<int>& Rejilla::needs() const {
    for (int column = static_cast<int>(needs_.size()); column < order_->columnCount(); ++column)
        needs_.push_back(measured(column));
    return needs_;
}

/// Room of the scroll bar and the frame.
int Rejilla::beside() const {
    constexpr double INCHES = 250.0 / 1440.0;
    return static_cast<int>(std::lround(INCHES * logicalDpiX()));
}

/// What the columns share.
int Rejilla::room() const {
    return std::min(viewport()->width(), width() - beside());
}

/// Equal shares of the room; a column that needs more than its share gets that, and the others share the rest.
void Rejilla::spread() {
    const int columns = order_->columnCount();
    if (resized_by_hand_ || columns == 0)
        return;
    const QScopedValueRollback spreading(spreading_, true);
    std::vector<int> widths(static_cast<std::size_t>(columns), 0), wanted = needs();
    const int lacking = std::accumulate(wanted.begin(), wanted.end(), -room());
    for (int& width : wanted)
        width -= std::clamp((lacking + columns - 1) / columns, 0, PADDING - LEAST_PADDING);
    wanted.front() = std::min(wanted.front(), static_cast<int>(WIDEST_NAME * room()));
    int rest = room(), sharers = columns;
    for (bool settled = false; !settled && sharers > 0;) {
        settled = true;
        const int share = rest / sharers;
        for (std::size_t i = 0; i < widths.size(); ++i) {
            if (widths[i] == 0 && wanted[i] > share) {
                widths[i] = wanted[i];
                rest -= wanted[i];
                --sharers;
                settled = false;
            }
        }
    }
    for (std::size_t i = 0; i < widths.size(); ++i) {
        if (widths[i] == 0) {
            widths[i] = rest / sharers--;
            rest -= widths[i];
        }
        setColumnWidth(static_cast<int>(i), widths[i]);
    }
    place_fixed_column();
}

void Rejilla::resizeEvent(QResizeEvent* event) {
    QTableView::resizeEvent(event);
    spread();
    place_fixed_column();
}

void Rejilla::changeEvent(QEvent* event) {
    QTableView::changeEvent(event);
    if (event->type() == QEvent::FontChange) {
        needs_.clear();
        fit_rows();
        spread();
    }
}

QSize Rejilla::sizeHint() const {
    const int width = order_->columnCount() * *std::ranges::max_element(needs()) + beside();
    const int rows = std::clamp(order_->rowCount(), FEWEST_ROWS, USUAL_ROWS);
    return {width,
            horizontalHeader()->sizeHint().height() + 2 * frameWidth() + rows * verticalHeader()->defaultSectionSize()};
}

QSize Rejilla::minimumSizeHint() const {
    return {fontMetrics().averageCharWidth() * 50, horizontalHeader()->sizeHint().height() + 2 * frameWidth() +
                                                       FEWEST_ROWS * verticalHeader()->defaultSectionSize()};
}

// ---- Reading it

QList<QStringList> Rejilla::rows_shown() const {
    QList<QStringList> rows(1);
    for (int column = 0; column < order_->columnCount(); ++column)
        rows.first() << order_->headerData(column, Qt::Horizontal).toString();
    for (int row = 0; row < order_->rowCount(); ++row) {
        QStringList cells;
        for (int column = 0; column < order_->columnCount(); ++column)
            cells << order_->index(row, column).data().toString();
        rows << cells;
    }
    return rows;
}

/// By rows and columns that hold chosen cells; without headers, ready to be put into cells elsewhere.
QString Rejilla::selected_text() const {
    std::set<int> rows, columns;
    for (const QItemSelectionRange& range : selectionModel()->selection()) {
        for (int row = range.top(); row <= range.bottom(); ++row)
            rows.insert(row);
        for (int column = range.left(); column <= range.right(); ++column)
            columns.insert(column);
    }
    QString text;
    for (const int row : rows) {
        QStringList line;
        for (const int column : columns) {
            const QModelIndex cell = order_->index(row, column);
            line << (selectionModel()->isSelected(cell) ? cell.data().toString() : QString());
        }
        text += line.join(u'\t') + u'\n';
    }
    return text;
}

void Rejilla::copy() {
    const bool whole = !selectionModel()->hasSelection();
    QString text = whole ? QString() : selected_text();
    if (whole) {
        for (const QStringList& row : rows_shown())
            text += row.join(u'\t') + u'\n';
    }
    QGuiApplication::clipboard()->setText(text);
    emit copied(whole);
}

bool Rejilla::find(const QString& text, From from) {
    const QString wanted = folded(text);
    const int rows = order_->rowCount(), step = from == From::Before ? -1 : 1;
    const int here = std::max(currentIndex().row(), 0);
    const int start = from == From::Here || !currentIndex().isValid() ? here : here + step;
    for (int i = 0; i < rows; ++i) {
        const QModelIndex cell = order_->index((start + i * step + 2 * rows) % rows, 0);
        if (folded(cell.data().toString()).contains(wanted)) {
            setCurrentIndex(cell);
            return true;
        }
    }
    return false;
}

void Rejilla::keyboardSearch(const QString& letters) {
    emit letters_typed(letters);
}
