#include "controls/entrada_textextend.h"

#include <QApplication>
#include <QClipboard>
#include <QContextMenuEvent>
#include <QDropEvent>
#include <QInputMethodEvent>
#include <QKeyEvent>
#include <QMenu>
#include <QMimeData>
#include <QValidator>

#include <functional>
#include <utility>

#include "controls/codigos_evento.h"

namespace {

/// One line: breaks, tabs and control characters of a text that comes in are blanks.
QString one_line(QString text) {
    for (QChar& c : text)
        if (c.unicode() < u' ' || c == QChar::LineSeparator || c == QChar::ParagraphSeparator)
            c = u' ';
    return text;
}

void redirect(const QMenu& menu, const char* name, const std::function<void()>& action) {
    for (QAction* entry : menu.actions())
        if (entry->objectName() == QLatin1String(name)) {
            QObject::disconnect(entry, &QAction::triggered, nullptr, nullptr);
            QObject::connect(entry, &QAction::triggered, entry, action);
        }
}

}  // namespace

/// What the user does to the text, judged by the rules of the box.
class textextend::Entrada::Rules : public QValidator {
public:
    explicit Rules(Entrada* entry) : QValidator(entry), entry_(entry) {}

    State validate(QString& text, int&) const override {
        const textextend& box = *entry_->box_;
        if (!entry_->by_user_ || reglas::may_become(box.filtro_, box.signo_, view(box.standing_), view(text)))
            return Acceptable;
        entry_->undone_ = true;
        return Invalid;
    }

private:
    Entrada* entry_;
};

textextend::Entrada::Entrada(textextend* box) : QLineEdit(box), box_(box) {
    setObjectName(QStringLiteral("Txt"));
    setMouseTracking(true);
    setValidator(new Rules(this));
}

bool textextend::Entrada::take(const QString& text) {
    if (isReadOnly())
        return false;
    QString line = one_line(text);
    if (box_->filtro_ != Filtro::Free)
        line = line.trimmed();
    if (line.isEmpty())
        return true;
    separate();
    const bool enters = reglas::may_enter(box_->filtro_, box_->signo_, view(line));
    const bool taken = enters && as_user([&] { insert(line); });
    separate();
    if (!taken) {
        end(false);
        emit box_->refused();
    }
    return taken;
}

void textextend::Entrada::keyPressEvent(QKeyEvent* event) {
    emit box_->KeyDown(key_code(*event), shift_of(event->modifiers()));
    if (const std::int16_t key = key_ascii(*event); key != 0)
        return press(key, event);
    if (event->matches(QKeySequence::Paste))
        take(QApplication::clipboard()->text());
    else if (event->matches(QKeySequence::Undo) || event->matches(QKeySequence::Redo))
        QLineEdit::keyPressEvent(event);  // back to texts that stood
    else
        as_user([&] { QLineEdit::keyPressEvent(event); });
}

void textextend::Entrada::keyReleaseEvent(QKeyEvent* event) {
    QLineEdit::keyReleaseEvent(event);
    emit box_->KeyUp(key_code(*event), shift_of(event->modifiers()));
}

void textextend::Entrada::inputMethodEvent(QInputMethodEvent* event) {
    if (isReadOnly())
        return event->ignore();
    if (!composing_)
        before_composition_ = text();
    composing_ = !event->preeditString().isEmpty();
    const QString typed = event->commitString();
    const QString commit = filtered(typed);
    bool taken = commit.isEmpty() == typed.isEmpty();
    event->setCommitString(commit, taken ? event->replacementStart() : 0, taken ? event->replacementLength() : 0);
    taken = as_user([&] { QLineEdit::inputMethodEvent(event); }) && taken;
    if (taken)
        return;
    take_back_composition();
    if (typed.size() > 1)
        emit box_->refused();
}

void textextend::Entrada::mousePressEvent(QMouseEvent* event) {
    const QPointF at = event->position();
    QLineEdit::mousePressEvent(event);
    emit box_->MouseDown(button_of(event->button()), shift_of(event->modifiers()), at.x(), at.y());
}

void textextend::Entrada::mouseMoveEvent(QMouseEvent* event) {
    const QPointF at = event->position();
    QLineEdit::mouseMoveEvent(event);
    emit box_->MouseMove(button_of(event->buttons()), shift_of(event->modifiers()), at.x(), at.y());
}

void textextend::Entrada::mouseReleaseEvent(QMouseEvent* event) {
    const QPointF at = event->position();
    const auto* clipboard = QApplication::clipboard();
    if (event->button() == Qt::MiddleButton && clipboard->supportsSelection()) {
        deselect();
        take(clipboard->text(QClipboard::Selection));
    } else {
        QLineEdit::mouseReleaseEvent(event);
    }
    if (entered_by_click_ && !hasSelectedText())
        selectAll();  // the click that enters the box put the caret and lost the selection
    entered_by_click_ = false;
    emit box_->MouseUp(button_of(event->button()), shift_of(event->modifiers()), at.x(), at.y());
    if (!std::exchange(double_clicked_, false) && event->button() == Qt::LeftButton && rect().contains(at.toPoint()))
        emit box_->Click();
}

void textextend::Entrada::mouseDoubleClickEvent(QMouseEvent* event) {
    QLineEdit::mouseDoubleClickEvent(event);
    double_clicked_ = true;
    emit box_->DblClick();
}

void textextend::Entrada::contextMenuEvent(QContextMenuEvent* event) {
    QMenu* menu = createStandardContextMenu();
    menu->setAttribute(Qt::WA_DeleteOnClose);
    redirect(*menu, "edit-paste", [this] { take(QApplication::clipboard()->text()); });
    redirect(*menu, "edit-cut", [this] { as_user([this] { cut(); }); });
    redirect(*menu, "edit-delete", [this] { as_user([this] { del(); }); });
    menu->popup(event->globalPos());
}

void textextend::Entrada::dropEvent(QDropEvent* event) {
    if (isReadOnly() || !event->mimeData()->hasText())
        return QLineEdit::dropEvent(event);
    setCursorPosition(cursorPositionAt(event->position().toPoint()));
    if (take(event->mimeData()->text()))
        event->acceptProposedAction();
    else
        event->setDropAction(Qt::IgnoreAction);  // the giver of a move keeps its text
}

void textextend::Entrada::focusInEvent(QFocusEvent* event) {
    const int caret = cursorPosition();
    QLineEdit::focusInEvent(event);
    if (std::exchange(inside_, true))
        return;  // back from a menu, another program or a message box
    entered_by_click_ = box_->select_on_focus_ && event->reason() == Qt::MouseFocusReason;
    if (box_->select_on_focus_)
        selectAll();
    else
        setCursorPosition(caret);  // the line edit selects on its own at a tab
    emit box_->GotFocus();
}

void textextend::Entrada::focusOutEvent(QFocusEvent* event) {
    QLineEdit::focusOutEvent(event);
    entered_by_click_ = false;
    if (!leaves(*event))
        return;
    inside_ = false;
    box_->Txt_LostFocus();
}

bool textextend::Entrada::leaves(const QFocusEvent& event) const {
    const Qt::FocusReason reason = event.reason();
    return reason != Qt::PopupFocusReason && reason != Qt::MenuBarFocusReason &&
           (reason != Qt::ActiveWindowFocusReason || window()->isActiveWindow());
}

std::int16_t textextend::Entrada::filtered(std::int16_t key) {
    key = reglas::filter_key(box_->filtro_, box_->signo_, key);
    emit box_->KeyPress(key);
    return key;
}

QString textextend::Entrada::filtered(const QString& typed) {
    QString result;
    for (const QChar c : typed) {
        const std::int16_t key = filtered(static_cast<std::int16_t>(c.unicode()));
        if (key == 0)
            return {};
        result.append(QChar(static_cast<char16_t>(key)));
    }
    return result;
}

void textextend::Entrada::press(std::int16_t key, QKeyEvent* event) {
    const std::int16_t kept = filtered(key);
    if (kept == 0)
        return event->accept();
    if (kept == key)
        as_user([&] { QLineEdit::keyPressEvent(event); });
    else if (!isReadOnly())
        as_user([&] { insert(QString(QChar(static_cast<char16_t>(kept)))); });
}

void textextend::Entrada::take_back_composition() {
    if (composing_ || text() == before_composition_)
        return;
    undo();
    if (text() != before_composition_)
        setText(before_composition_);
    end(false);
}

void textextend::Entrada::separate() {
    if (hasSelectedText() || text().isEmpty())
        return;
    const int at = cursorPosition();
    setCursorPosition(at == 0 ? 1 : at - 1);
    setCursorPosition(at);
}
