#include "controls/marca_incognita.h"

#include <QKeyEvent>

#include "controls/enlace.h"
#include "core/palette.h"

QColor color_incognita() {
    const tavo::Rgb red = tavo::PALETTE[12];
    return {red.r, red.g, red.b};
}

void marcar(QWidget* control, bool incognita) {
    QPalette ink;  // names no other colour: those follow the desktop
    if (incognita)
        for (const auto group : {QPalette::Active, QPalette::Inactive})
            for (const auto role : {QPalette::WindowText, QPalette::Text})
                ink.setColor(group, role, color_incognita());
    control->setPalette(ink);
}

MarcaIncognita::MarcaIncognita(QWidget* padre) : QLabel(padre) {
    enlace::prepare(this);
    show_look();
}

void MarcaIncognita::set_unknown(bool unknown) {
    unknown_ = unknown;
    marcar(this, unknown);
    show_look();
}

void MarcaIncognita::set_silent(bool silent) {
    silent_ = silent;
    show_look();
}

QSize MarcaIncognita::sizeHint() const {
    QFont bold = font();
    bold.setBold(true);
    const auto width = [this](const QFont& of) {
        return QFontMetrics(of).size(Qt::TextShowMnemonic | Qt::TextSingleLine, text()).width();
    };
    const QSize own = QLabel::sizeHint();
    return {own.width() - width(font()) + width(bold), own.height()};
}

void MarcaIncognita::choose() {
    if (!silent_)
        emit Click();
}

void MarcaIncognita::mouseReleaseEvent(QMouseEvent* event) {
    if (enlace::clicked(this, event))
        choose();
}

void MarcaIncognita::keyPressEvent(QKeyEvent* event) {
    if (enlace::chosen(event))
        choose();
    else
        QLabel::keyPressEvent(event);
}

void MarcaIncognita::enterEvent(QEnterEvent* event) {
    QLabel::enterEvent(event);
    show_look();
}

void MarcaIncognita::leaveEvent(QEvent* event) {
    QLabel::leaveEvent(event);
    show_look();
}

void MarcaIncognita::focusInEvent(QFocusEvent* event) {
    QLabel::focusInEvent(event);
    show_look();
}

void MarcaIncognita::focusOutEvent(QFocusEvent* event) {
    QLabel::focusOutEvent(event);
    show_look();
}

void MarcaIncognita::show_look() {
    enlace::show_look(this, silent_, unknown_);
}
