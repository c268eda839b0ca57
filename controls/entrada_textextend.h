#pragma once
// The line edit inside the entry box; only the box includes this.

#include <QLineEdit>
#include <QScopedValueRollback>

#include "controls/textextend.h"

inline std::u16string_view view(const QString& text) {
    return {QStringView(text).utf16(), static_cast<std::size_t>(text.size())};
}

/// The line edit, with the box's rules as the validator of what the user does: a change that they do not take is undone
/// before anybody sees it and leaves no trace in the undo history.
class textextend::Entrada : public QLineEdit {
public:
    explicit Entrada(textextend* box);

    /// Paste and drop: one line, in the filtering modes without blanks around it. False when it is not taken.
    bool take(const QString& text);

    /// Runs a handler of the host, whose own changes of the text are not the user's.
    template <class Handler>
    void as_host(Handler handler) {
        const QScopedValueRollback host(by_user_, false);
        handler();
    }

protected:
    void keyPressEvent(QKeyEvent* event) override;
    void keyReleaseEvent(QKeyEvent* event) override;
    void inputMethodEvent(QInputMethodEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void mouseDoubleClickEvent(QMouseEvent* event) override;
    void contextMenuEvent(QContextMenuEvent* event) override;
    void dropEvent(QDropEvent* event) override;
    void focusInEvent(QFocusEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;

private:
    class Rules;

    /// To a menu, another program or a message box the user does not leave; to another child window yes.
    bool leaves(const QFocusEvent& event) const;

    /// False when the rules undid what the action changed; the caret is then at the end.
    template <class Action>
    bool as_user(Action action) {
        undone_ = false;
        {
            const QScopedValueRollback user(by_user_, true);
            action();
        }
        if (!undone_)
            return true;
        undone_ = false;
        end(false);
        return false;
    }

    /// The key as the box and then the host let it go on.
    std::int16_t filtered(std::int16_t key);
    /// The characters of an input method, each as the key that it stands for; empty when one of them is dropped.
    QString filtered(const QString& typed);
    void press(std::int16_t key, QKeyEvent* event);

    /// Beginning a composition deletes the selection, which a refused one gives back.
    void take_back_composition();

    /// Ends the step that undo takes back in one; moving the caret does.
    void separate();

    textextend* box_;
    bool by_user_ = false, undone_ = false;
    bool inside_ = false, entered_by_click_ = false, double_clicked_ = false;
    bool composing_ = false;
    QString before_composition_;
};
