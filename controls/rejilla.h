#pragma once
// A grid to read: sorted by a click, copied, searched.

#include <QTableView>

#include <vector>

class OrdenRejilla;

/// Shows a table whose model it only reads. A click on a header sorts (ascending, descending, stored order; what is
/// unknown stands last), letters go to whoever searches, Ctrl+C copies the chosen cells, or the whole table with its
/// headers where none is. Columns share the width equally, those that need more get it, and what the user has given
/// one stays. Its first column stays in place while the others scroll.
class Rejilla : public QTableView {
    Q_OBJECT
public:
    /// What a cell is sorted by: a number, or a text; no value: unknown.
    static constexpr int ORDER = Qt::UserRole;

    /// `copy`: caption of the context menu's entry.
    Rejilla(QAbstractItemModel* table, const QString& copy, QWidget* padre = nullptr);

    /// Headers, then all rows, as they are shown.
    QList<QStringList> rows_shown() const;
    /// Goes to the next row whose first cell contains the text, wherever and however accented; from the current row
    /// on, or from beyond it. False, and nowhere, when there is none.
    enum class From { Here, After, Before };
    bool find(const QString& text, From from);
    void copy();

    void keyboardSearch(const QString& letters) override;
    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

signals:
    void copied(bool whole);
    void letters_typed(const QString& letters);
    /// The current row is another one; its place in the stored order.
    void row_entered(int row);

protected:
    void resizeEvent(QResizeEvent* event) override;
    void changeEvent(QEvent* event) override;
    void scrollContentsBy(int dx, int dy) override;

private:
    void make_fixed_column(QAction* copying);
    void place_fixed_column();
    void fit_rows();
    int beside() const;
    int room() const;
    void spread();
    int measured(int column) const;
    const std::vector<int>& needs() const;
    QString selected_text() const;

    OrdenRejilla* order_;
    QTableView* fixed_;               // the first column, over the others while they are scrolled
    mutable std::vector<int> needs_;  // widths of the columns; empty: to be measured
    bool spreading_ = false, resized_by_hand_ = false;
};
