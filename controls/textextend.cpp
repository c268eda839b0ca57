#include "controls/textextend.h"

#include <QApplication>
#include <QProxyStyle>
#include <QScopedValueRollback>

#include <algorithm>
#include <array>
#include <cmath>

#include "controls/bolsa_propiedades.h"
#include "controls/entrada_textextend.h"
#include "core/numtext.h"

namespace {

constexpr int FORE_COLOUR = 0xD05C28;  // blue, green, red
constexpr int WHITE = 0xFFFFFF;
constexpr int HEADER_INDENT = 4;  // pixels, as the text within the entry's frame
constexpr int CUSTOM_POINTER = 99;
constexpr double READABLE = 4.5;  // contrast of text, WCAG 2.1, success criterion 1.4.3
const auto FONT_NAME = QStringLiteral("Ms Sans Serif");

QColor colour_of(int value) {
    return {value & 0xFF, value >> 8 & 0xFF, value >> 16 & 0xFF};
}

/// Forms know no transparency.
int value_of(const QColor& colour) {
    if (colour.alpha() == 0)
        return WHITE;
    return colour.red() | colour.green() << 8 | colour.blue() << 16;
}

/// Relative luminance, WCAG 2.1.
double luminance(const QColor& colour) {
    const auto linear = [](double c) { return c <= 0.03928 ? c / 12.92 : std::pow((c + 0.055) / 1.055, 2.4); };
    return 0.2126 * linear(colour.redF()) + 0.7152 * linear(colour.greenF()) + 0.0722 * linear(colour.blueF());
}

/// The colour, as much lighter as a dark background needs.
QColor readable(QColor colour, const QColor& background) {
    const double behind = luminance(background);
    for (int step = 0; step < 16 && (luminance(colour) + 0.05) / (behind + 0.05) < READABLE && behind < 0.18; ++step)
        colour =
            QColor::fromHslF(colour.hslHueF(), colour.hslSaturationF(), std::min(1.0F, colour.lightnessF() + 0.05F));
    return colour;
}

Qt::Alignment alignment_of(int alignment) {
    constexpr std::array SIDES{Qt::AlignLeft, Qt::AlignRight, Qt::AlignHCenter};
    return SIDES[static_cast<std::size_t>(std::clamp(alignment, 0, 2))] | Qt::AlignVCenter;
}

Qt::CursorShape pointer_shape(int pointer) {
    constexpr std::array SHAPES{Qt::IBeamCursor,     Qt::ArrowCursor,   Qt::CrossCursor,     Qt::IBeamCursor,
                                Qt::ArrowCursor,     Qt::SizeAllCursor, Qt::SizeBDiagCursor, Qt::SizeVerCursor,
                                Qt::SizeFDiagCursor, Qt::SizeHorCursor, Qt::UpArrowCursor,   Qt::WaitCursor,
                                Qt::ForbiddenCursor, Qt::BusyCursor,    Qt::WhatsThisCursor, Qt::SizeAllCursor};
    const auto at = static_cast<std::size_t>(pointer);
    return pointer >= 0 && at < SHAPES.size() ? SHAPES[at] : Qt::IBeamCursor;
}

QString plain_caption(const QString& caption) {
    QString plain;
    for (qsizetype i = 0; i < caption.size(); ++i) {
        if (caption[i] == u'&' && i + 1 < caption.size())
            ++i;
        plain.append(caption[i]);
    }
    plain = plain.trimmed();
    if (plain.endsWith(u':'))
        plain.chop(1);
    return plain.trimmed();
}

/// Shows a character of the host's choice for every one of a password.
class PasswordStyle : public QProxyStyle {
public:
    explicit PasswordStyle(QChar character) : QProxyStyle(QApplication::style()->name()), character_(character) {}

    int styleHint(StyleHint hint, const QStyleOption* option, const QWidget* widget,
                  QStyleHintReturn* data) const override {
        return hint == SH_LineEdit_PasswordCharacter ? character_.unicode()
                                                     : QProxyStyle::styleHint(hint, option, widget, data);
    }

private:
    QChar character_;
};

/// A stored property: the name it is written under, the one it is read under (none: not read), the property itself.
struct Row {
    const char* written;
    const char* read;
    const char* property;
    QVariant omission;
};

const std::array<Row, 21>& rows() {
    static const std::array<Row, 21> ROWS{{
        {"Text", "Text", "Text", QString()},
        {"Alignement", "Alignement", "Alignment", 1},
        {"Appearance", "Appearance", "Appearance", 1},
        {"BorderStyle", "BorderStyle", "BorderStyle", 1},
        {"MousePointer", "MousePointer", "MousePointer", 0},
        {"MouseIcon", "MouseIcon", "MouseIcon", {}},
        {"NumberBox", "NumberBox", "NumberBox", 0},
        {"Signo", "Signo", "Signo", true},
        {"Locked", "Locked", "Locked", 0},
        {"Enabled", "Enabled", "Enabled", 1},
        {"ForeColor", "ForeColor", "ForeColor", FORE_COLOUR},
        {"Backcolor", "BackColor", "BackColor", QString()},
        {"Font", "Font", "Font", FONT_NAME},
        {"PasswordChar", nullptr, "PasswordChar", QString()},
        {"SelOnFocus", "SelOnFocus", "SelOnFocus", 1},
        {"Header", "Header", "Header", 0},
        {"HeaderAlignement", "HeaderAlignement", "HeaderAlignement", 1},
        {"HeaderForeColor", "HeaderForeColor", "HeaderForeColor", FORE_COLOUR},
        {"HeaderBackColor", "HeaderBackColor", "HeaderBackColor", WHITE},
        {"HeaderFont", "HeaderFont", "HeaderFont", FONT_NAME},
        {"HeaderCaption", "HeaderCaption", "HeaderCaption", QStringLiteral("Header")},
    }};
    return ROWS;
}

}  // namespace

textextend::textextend(QWidget* padre)
    : QWidget(padre), lblHeader(new QLabel(this)), entrada_(new Entrada(this)), Txt(entrada_) {
    lblHeader->setObjectName(QStringLiteral("lblHeader"));
    lblHeader->setTextFormat(Qt::PlainText);
    lblHeader->setBuddy(Txt);
    lblHeader->setIndent(HEADER_INDENT);
    lblHeader->setText(QStringLiteral("Header"));
    lblHeader->hide();
    setFocusProxy(Txt);
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
    connect(Txt, &QLineEdit::textChanged, this, &textextend::Txt_Change);
    setAlignment(1);
    setHeaderAlignement(1);
    colour();
    lay_out();
}

void textextend::announce(const char* property) {
    if (!restoring_)
        emit PropertyChanged(QLatin1String(property));
}

void textextend::setFont_(const QFont& font) {
    Txt->setFont(font);
    lay_out();
    announce("Font");
}

QColor textextend::ForeColor() const {
    return fore_.isValid() ? fore_ : colour_of(FORE_COLOUR);
}

void textextend::setForeColor(const QColor& ink) {
    fore_ = ink;
    colour();
    announce("ForeColor");
}

QColor textextend::BackColor() const {
    return back_.isValid() ? back_ : palette().color(QPalette::Active, QPalette::Base);
}

void textextend::setBackColor(const QColor& ink) {
    back_ = ink;
    colour();
    announce("BackColor");
}

void textextend::setText(const QString& text) {
    entrada_->as_host([&] { Txt->setText(text); });
    announce("Text");
}

void textextend::setAlignment(int alignment) {
    alignment_ = std::clamp(alignment, 0, 2);
    Txt->setAlignment(alignment_of(alignment_));
    announce("Alignment");
}

void textextend::setMousePointer(int pointer) {
    mouse_pointer_ = pointer;
    show_pointer();
    announce("MousePointer");
}

void textextend::setMouseIcon(const QPixmap& picture) {
    mouse_icon_ = picture;
    show_pointer();
    announce("MouseIcon");
}

void textextend::setAppearance(int appearance) {
    appearance_ = appearance;
    announce("Appearance");
}

void textextend::setBorderStyle(int style) {
    Txt->setFrame(style != 0);
    lay_out();
    announce("BorderStyle");
}

void textextend::setNumberBox(int mode) {
    if (mode < 0 || mode > static_cast<int>(Filtro::Letters))
        return;
    const auto wanted = static_cast<Filtro>(mode);
    if (wanted != filtro_)
        Txt->setText(Txt->text());  // undo must not go back to what the new mode refuses
    filtro_ = wanted;
    Txt->setInputMethodHints(filtro_ == Filtro::Integer   ? Qt::ImhDigitsOnly
                             : filtro_ == Filtro::Decimal ? Qt::ImhFormattedNumbersOnly
                             : filtro_ == Filtro::Letters ? Qt::ImhLatinOnly
                                                          : Qt::ImhNone);
    announce("NumberBox");
}

void textextend::setSigno(bool allowed) {
    if (allowed != signo_)
        Txt->setText(Txt->text());
    signo_ = allowed;
    announce("Signo");
}

void textextend::setSelOnFocus(bool select) {
    select_on_focus_ = select;
    announce("SelOnFocus");
}

void textextend::setEnabled_(bool enabled) {
    Txt->setEnabled(enabled);
    announce("Enabled");
}

void textextend::setLocked(bool locked) {
    Txt->setReadOnly(locked);
    show_pointer();
    announce("Locked");
}

void textextend::setPasswordChar(const QString& character) {
    password_char_ = character.left(1);
    QStyle* old = qobject_cast<QProxyStyle*>(Txt->style());
    if (!old || old->parent() != Txt)
        old = nullptr;
    QStyle* style = password_char_.isEmpty() ? nullptr : new PasswordStyle(password_char_.front());
    if (style)
        style->setParent(Txt);
    Txt->setStyle(style);
    delete old;
    Txt->setEchoMode(style ? QLineEdit::Password : QLineEdit::Normal);
    show_tip();
    announce("PasswordChar");
}

void textextend::setHeader(bool visible) {
    lblHeader->setVisible(visible);
    lay_out();
    announce("Header");
}

void textextend::setHeaderAlignement(int alignment) {
    header_alignment_ = std::clamp(alignment, 0, 2);
    lblHeader->setAlignment(alignment_of(header_alignment_));
    announce("HeaderAlignement");
}

QColor textextend::HeaderForeColor() const {
    return header_fore_.isValid() ? header_fore_ : colour_of(FORE_COLOUR);
}

void textextend::setHeaderForeColor(const QColor& ink) {
    header_fore_ = ink;
    colour();
    announce("HeaderForeColor");
}

QColor textextend::HeaderBackColor() const {
    return header_back_.isValid() ? header_back_ : colour_of(WHITE);
}

void textextend::setHeaderBackColor(const QColor& ink) {
    header_back_ = ink;
    colour();
    announce("HeaderBackColor");
}

void textextend::setHeaderFont(const QFont& font) {
    lblHeader->setFont(font);
    lay_out();
    announce("HeaderFont");
}

void textextend::setHeaderCaption(const QString& caption) {
    lblHeader->setText(caption);
    Txt->setAccessibleName(plain_caption(caption));
    updateGeometry();
    announce("HeaderCaption");
}

double textextend::value() const {
    return tavo::Val(Text().toStdString());
}

void textextend::Txt_Change(const QString& text) {
    if (text == standing_)
        return;  // put back
    if (reglas::change(filtro_, view(text), view(standing_)) != view(text)) {
        entrada_->as_host([&] { Txt->setText(QString(standing_)); });
        return;
    }
    standing_ = text;
    show_tip();
    entrada_->as_host([&] { emit Change(); });
}

void textextend::Txt_LostFocus() {
    const QString text = Txt->text();
    const std::u16string_view left = reglas::on_leaving(filtro_, view(text));
    if (left != view(text))
        Txt->setText(QString::fromUtf16(left.data(), static_cast<qsizetype>(left.size())));
    if (Txt->isEnabled() && isVisible())  // the user did not leave a box that was taken away
        emit LostFocus();
}

void textextend::show_tip() {
    const QString text = Txt->text();
    if (!password_char_.isEmpty() || !reglas::needs_tip(Txt->fontMetrics().horizontalAdvance(text), Txt->width()))
        return Txt->setToolTip(QString());
    Txt->setToolTip(Qt::mightBeRichText(text) ? QStringLiteral("<qt>%1</qt>").arg(text.toHtmlEscaped()) : text);
}

void textextend::show_pointer() {
    if (mouse_pointer_ == CUSTOM_POINTER && !mouse_icon_.isNull())
        Txt->setCursor(QCursor(mouse_icon_));
    else if (mouse_pointer_ == 0 && Locked())
        Txt->setCursor(Qt::ArrowCursor);
    else
        Txt->setCursor(pointer_shape(mouse_pointer_));
}

void textextend::colour() {
    const auto paint = [](QPalette& inks, QPalette::ColorRole role, const QColor& ink) {
        for (const auto group : {QPalette::Active, QPalette::Inactive})  // disabled stays the style's grey
            inks.setColor(group, role, ink);
    };
    QPalette box = palette();
    if (back_.isValid())
        box.setColor(QPalette::Base, back_);
    paint(box, QPalette::Text, fore_.isValid() ? fore_ : readable(ForeColor(), BackColor()));
    Txt->setPalette(box);

    QPalette header = palette();
    const QColor window = header.color(QPalette::Active, QPalette::Window);
    const bool dark = luminance(window) < 0.18;
    const bool own = header_back_.isValid();
    const QColor behind = own || !dark ? HeaderBackColor() : window;
    const QColor seen = behind.alpha() < 255 ? window : behind;
    header.setColor(QPalette::Window, behind);
    paint(header, QPalette::WindowText, header_fore_.isValid() ? header_fore_ : readable(HeaderForeColor(), seen));
    lblHeader->setPalette(header);
    lblHeader->setAutoFillBackground(own || !dark);
}

void textextend::lay_out() {
    if (laying_out_)
        return;
    {
        const QScopedValueRollback busy(laying_out_, true);
        const int header = Header() ? lblHeader->fontMetrics().height() : 0;
        const int box = Txt->sizeHint().height();
        setFixedHeight(header + box);
        lblHeader->setGeometry(0, 0, width(), header);
        Txt->setGeometry(0, header, width(), box);
        show_tip();
        updateGeometry();
    }
    emit Resize();
}

QSize textextend::sizeHint() const {
    return {std::max(Txt->sizeHint().width(), minimumSizeHint().width()), height()};
}

QSize textextend::minimumSizeHint() const {
    const int header = Header() ? lblHeader->sizeHint().width() : 0;
    return {std::max(header, Txt->minimumSizeHint().width()), height()};
}

void textextend::resizeEvent(QResizeEvent*) {
    lay_out();
}

void textextend::changeEvent(QEvent* event) {
    QWidget::changeEvent(event);
    if (event->type() == QEvent::PaletteChange || event->type() == QEvent::StyleChange)
        colour();
    if (event->type() == QEvent::FontChange || event->type() == QEvent::StyleChange)
        lay_out();
}

QVariant textextend::stored(const char* name) const {
    const QVariant value = property(name);
    const QLatin1String which(name);
    if (which == QLatin1String("BackColor") && !back_.isValid())
        return QString();
    if ((which == QLatin1String("Font") && !Txt->testAttribute(Qt::WA_SetFont)) ||
        (which == QLatin1String("HeaderFont") && !lblHeader->testAttribute(Qt::WA_SetFont)))
        return FONT_NAME;
    if (which == QLatin1String("MouseIcon") && mouse_icon_.isNull())
        return {};
    return value.typeId() == QMetaType::QColor ? QVariant(value_of(value.value<QColor>())) : value;
}

void textextend::WriteProperties(BolsaPropiedades& store) const {
    for (const Row& row : rows())
        store.WriteProperty(QLatin1String(row.written), stored(row.property), row.omission);
}

void textextend::ReadProperties(const BolsaPropiedades& store) {
    const QScopedValueRollback restoring(restoring_, true);
    filtro_ = Filtro::Free;  // the text comes before its mode
    for (const Row& row : rows())
        if (row.read)
            restore(row.property, store.ReadProperty(QLatin1String(row.read), row.omission), row.omission);
}

void textextend::restore(const char* name, const QVariant& value, const QVariant& omission) {
    const int type = property(name).typeId();
    if (type == QMetaType::QPixmap)
        return setMouseIcon(value.value<QPixmap>());
    if (type == QMetaType::QColor)
        setProperty(name, value == omission ? QColor() : colour_of(value.toInt()));
    else if (type == QMetaType::QFont && value.typeId() != QMetaType::QFont)
        setProperty(name, value == omission ? QFont() : QFont(value.toString()));
    else
        setProperty(name, value);
}
