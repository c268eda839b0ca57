#include "controls/linea_estado.h"

#include <QEvent>
#include <QTextCursor>
#include <QTextDocument>

#include <cmath>

#include "controls/tintas.h"

namespace {

constexpr int NARROWEST = 24;  // characters

}  // namespace

LineaEstado::LineaEstado(int lines, QWidget* padre) : QPlainTextEdit(padre), lines_(lines) {
    setReadOnly(true);
    setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
    setTabChangesFocus(true);
    setFocusPolicy(Qt::ClickFocus);  // the way through the window by keys passes the controls
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
    viewport()->setAutoFillBackground(false);
    fit();
}

void LineaEstado::set_outcome(const QString& text) {
    show_text(text, false);
}

void LineaEstado::set_outcome(const QString& text, const QString& fault) {
    set_outcome(text);
    if (fault.isEmpty())
        return;
    QTextCharFormat ink;
    ink.setForeground(fault_ink(palette()));
    QTextCursor end(document());
    end.movePosition(QTextCursor::End);
    end.insertText(u'\n' + fault, ink);
    text_ += u'\n' + fault;
}

void LineaEstado::set_fault(const QString& text) {
    show_text(text, true);
}

void LineaEstado::show_text(const QString& text, bool fault) {
    if (fault != fault_) {
        fault_ = fault;
        QPalette ink;  // what is not set stays the parent's
        if (fault)
            ink.setColor(QPalette::Text, fault_ink(palette()));
        setPalette(ink);
    }
    if (text == text_)
        return;
    setTextCursor(QTextCursor(document()));  // whose ink the new text takes
    setPlainText(text_ = text);
}

/// With the pixel: a plain text edit scrolls where its text fills it exactly.
void LineaEstado::fit() {
    const double text = lines_ * fontMetrics().lineSpacing() + 2.0 * document()->documentMargin() + 1.0;
    setFixedHeight(static_cast<int>(std::ceil(text)) + 2 * frameWidth());
}

QSize LineaEstado::sizeHint() const {
    return {minimumSizeHint().width(), height()};
}

QSize LineaEstado::minimumSizeHint() const {
    return {NARROWEST * fontMetrics().averageCharWidth(), height()};
}

void LineaEstado::changeEvent(QEvent* event) {
    QPlainTextEdit::changeEvent(event);
    if (event->type() == QEvent::FontChange || event->type() == QEvent::StyleChange)
        fit();
}
