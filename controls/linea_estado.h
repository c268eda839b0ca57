#pragma once
// What a calculation found, or why it found nothing, below the entries.

#include <QPlainTextEdit>

/// Framed sentences that wrap, can be selected and copied. Its height is that of so many lines whatever it says, so
/// nothing jumps; a longer text scrolls.
class LineaEstado : public QPlainTextEdit {
    Q_OBJECT
public:
    explicit LineaEstado(int lines, QWidget* padre = nullptr);

    void set_outcome(const QString& text);
    /// And below it, in the other ink, what is wrong with it.
    void set_outcome(const QString& text, const QString& fault);
    /// In another ink, for there is no answer.
    void set_fault(const QString& text);
    bool is_fault() const { return fault_; }

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

protected:
    void changeEvent(QEvent* event) override;

private:
    void show_text(const QString& text, bool fault);
    void fit();

    int lines_;
    bool fault_ = false;
    QString text_;  // toPlainText() makes blanks of no-break spaces
};
