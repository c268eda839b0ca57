#pragma once
// The entry box of the editing windows: one line with an optional header above it and a filter on what is typed.

#include <QColor>
#include <QFont>
#include <QLabel>
#include <QLineEdit>
#include <QPixmap>
#include <QString>
#include <QWidget>

#include <cstdint>

#include "controls/reglas_textextend.h"

class BolsaPropiedades;

/// Entry `Txt` below the label `lblHeader`. Properties, events and stored names are those of forms that were saved with
/// it; their spelling is part of the interface. Every setter announces its property by PropertyChanged.
///
/// What the user brings in by paste, drop or input method goes by the rules of typed keys; a text that they do not take
/// leaves the box as it was, caret at the end, and is told by `refused`. A text set by the host has to be a number in
/// the number modes, else the box keeps the one it has. The widget has the height that its fonts ask for.
class textextend : public QWidget {
    Q_OBJECT
    Q_PROPERTY(QFont Font READ Font WRITE setFont_ NOTIFY PropertyChanged)
    Q_PROPERTY(QColor ForeColor READ ForeColor WRITE setForeColor NOTIFY PropertyChanged)
    Q_PROPERTY(QColor BackColor READ BackColor WRITE setBackColor NOTIFY PropertyChanged)
    Q_PROPERTY(QString Text READ Text WRITE setText NOTIFY PropertyChanged)
    Q_PROPERTY(int Alignment READ Alignment WRITE setAlignment NOTIFY PropertyChanged)
    Q_PROPERTY(int MousePointer READ MousePointer WRITE setMousePointer NOTIFY PropertyChanged)
    Q_PROPERTY(QPixmap MouseIcon READ MouseIcon WRITE setMouseIcon NOTIFY PropertyChanged)
    Q_PROPERTY(int Appearance READ Appearance WRITE setAppearance NOTIFY PropertyChanged)
    Q_PROPERTY(int BorderStyle READ BorderStyle WRITE setBorderStyle NOTIFY PropertyChanged)
    Q_PROPERTY(int NumberBox READ NumberBox WRITE setNumberBox NOTIFY PropertyChanged)
    Q_PROPERTY(bool Signo READ Signo WRITE setSigno NOTIFY PropertyChanged)
    Q_PROPERTY(bool SelOnFocus READ SelOnFocus WRITE setSelOnFocus NOTIFY PropertyChanged)
    Q_PROPERTY(bool Enabled READ Enabled WRITE setEnabled_ NOTIFY PropertyChanged)
    Q_PROPERTY(bool Locked READ Locked WRITE setLocked NOTIFY PropertyChanged)
    Q_PROPERTY(QString PasswordChar READ PasswordChar WRITE setPasswordChar NOTIFY PropertyChanged)
    Q_PROPERTY(bool Header READ Header WRITE setHeader NOTIFY PropertyChanged)
    Q_PROPERTY(int HeaderAlignement READ HeaderAlignement WRITE setHeaderAlignement NOTIFY PropertyChanged)
    Q_PROPERTY(QColor HeaderForeColor READ HeaderForeColor WRITE setHeaderForeColor NOTIFY PropertyChanged)
    Q_PROPERTY(QColor HeaderBackColor READ HeaderBackColor WRITE setHeaderBackColor NOTIFY PropertyChanged)
    Q_PROPERTY(QFont HeaderFont READ HeaderFont WRITE setHeaderFont NOTIFY PropertyChanged)
    Q_PROPERTY(QString HeaderCaption READ HeaderCaption WRITE setHeaderCaption NOTIFY PropertyChanged)

public:
    explicit textextend(QWidget* padre = nullptr);

    /// QFont() is the program's own.
    QFont Font() const { return Txt->font(); }
    void setFont_(const QFont& font);
    /// A colour that the host never set, or set to an invalid one, is shown in a variant that its background lets read.
    QColor ForeColor() const;
    void setForeColor(const QColor& colour);
    QColor BackColor() const;
    void setBackColor(const QColor& colour);
    QString Text() const { return Txt->text(); }
    void setText(const QString& text);
    /// 0 left, 1 right, 2 centred.
    int Alignment() const { return alignment_; }
    void setAlignment(int alignment);
    /// 0 the entry's own, 1 to 15 the shapes of a form's pointer, 99 the picture of MouseIcon.
    int MousePointer() const { return mouse_pointer_; }
    void setMousePointer(int pointer);
    QPixmap MouseIcon() const { return mouse_icon_; }
    void setMouseIcon(const QPixmap& picture);
    /// 0 flat, 1 raised; the platform's style draws both alike.
    int Appearance() const { return appearance_; }
    void setAppearance(int appearance);
    /// 0 no border, 1 a frame.
    int BorderStyle() const { return Txt->hasFrame() ? 1 : 0; }
    void setBorderStyle(int style);
    /// A Filtro; another number leaves the mode as it is.
    int NumberBox() const { return static_cast<int>(filtro_); }
    void setNumberBox(int mode);
    bool Signo() const { return signo_; }
    void setSigno(bool allowed);
    bool SelOnFocus() const { return select_on_focus_; }
    void setSelOnFocus(bool select);
    bool Enabled() const { return Txt->isEnabledTo(this); }
    void setEnabled_(bool enabled);
    bool Locked() const { return Txt->isReadOnly(); }
    void setLocked(bool locked);
    /// Shown instead of every character; empty shows the text. A longer string gives its first character.
    QString PasswordChar() const { return password_char_; }
    void setPasswordChar(const QString& character);
    bool Header() const { return lblHeader->isVisibleTo(this); }
    void setHeader(bool visible);
    int HeaderAlignement() const { return header_alignment_; }
    void setHeaderAlignement(int alignment);
    QColor HeaderForeColor() const;
    void setHeaderForeColor(const QColor& colour);
    /// A transparent one lets the window through.
    QColor HeaderBackColor() const;
    void setHeaderBackColor(const QColor& colour);
    QFont HeaderFont() const { return lblHeader->font(); }
    void setHeaderFont(const QFont& font);
    /// Its mnemonic leads to the entry, which it names for assistive programs.
    QString HeaderCaption() const { return lblHeader->text(); }
    void setHeaderCaption(const QString& caption);

    Filtro filtro() const { return filtro_; }
    double value() const;  // leading number of the text, 0 for none
    QLineEdit* entry() const { return Txt; }

    void WriteProperties(BolsaPropiedades& store) const;
    /// The password character is written but not read back.
    void ReadProperties(const BolsaPropiedades& store);

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

signals:
    // Shift: 1 shift, 2 control, 4 alt. Button: 1 left, 2 right, 4 middle. X, Y: pixels from the entry's corner.
    void DblClick();
    void MouseDown(std::int16_t Button, std::int16_t Shift, double X, double Y);
    void MouseMove(std::int16_t Button, std::int16_t Shift, double X, double Y);
    void MouseUp(std::int16_t Button, std::int16_t Shift, double X, double Y);
    void Change();
    void Click();
    void KeyUp(std::int16_t KeyCode, std::int16_t Shift);
    void KeyDown(std::int16_t KeyCode, std::int16_t Shift);
    /// After the box's own filter; the host may change the key or drop it with 0.
    void KeyPress(std::int16_t& KeyAscii);
    void Resize();

    void PropertyChanged(const QString& name);
    void GotFocus();
    /// The user went elsewhere in the program; an empty number has become "0".
    void LostFocus();
    /// A text that came in at once was not taken.
    void refused();

protected:
    void resizeEvent(QResizeEvent* event) override;
    void changeEvent(QEvent* event) override;

private:
    class Entrada;
    friend class Entrada;

    void Txt_Change(const QString& text);
    void Txt_LostFocus();
    void announce(const char* property);
    void lay_out();
    void colour();
    void show_tip();
    void show_pointer();
    QVariant stored(const char* property) const;
    void restore(const char* property, const QVariant& value, const QVariant& omission);

    QLabel* lblHeader;
    Entrada* entrada_;
    QLineEdit* Txt;     // entrada_
    QString standing_;  // the text before a change
    Filtro filtro_ = Filtro::Free;
    bool signo_ = true, select_on_focus_ = true;
    int alignment_ = -1, header_alignment_ = -1, mouse_pointer_ = 0, appearance_ = 1;
    QPixmap mouse_icon_;
    QString password_char_;
    QColor fore_, back_, header_fore_, header_back_;  // invalid: not set by the host
    bool restoring_ = false, laying_out_ = false;
};
