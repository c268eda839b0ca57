#pragma once
// The grid of the language editor.

#include <QModelIndex>
#include <QTableView>

#include "shell/modelo_idiomas.h"

/// Numbers stand at the left whatever is scrolled; faults are tinted and bear a sign. Editing, copying and the like are
/// asked for by signals.
class RejillaIdiomas : public QTableView {
    Q_OBJECT
public:
    explicit RejillaIdiomas(ModeloIdiomas* modelo, QWidget* padre);

    /// Widths of the columns: up to four languages share the room, more have a fixed width each and are scrolled.
    void spread();
    /// Cursor and selection to one cell, whatever keys are held.
    void choose(const QModelIndex& index);
    /// The cells of the selection as one block, or the current cell.
    QModelIndexList block() const;

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

signals:
    /// A cell is to be edited, beginning with what was typed (empty: with its text).
    void edit_requested(const QModelIndex& index, const QString& typed);
    void copy_requested();
    void paste_requested();
    void clear_requested();
    void undo_requested();
    void redo_requested();
    void moved();  // scrolled, or columns were resized

protected:
    void keyPressEvent(QKeyEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void scrollContentsBy(int dx, int dy) override;
    void changeEvent(QEvent* event) override;

private:
    int width_of(int characters) const;
    bool runs_command(const QKeyEvent& event);
    void fit_rows();
};
