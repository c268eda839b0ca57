// The entry box of the editing windows under real keys, pastes, drops and input methods.

#include <QApplication>
#include <QClipboard>
#include <QDropEvent>
#include <QHBoxLayout>
#include <QInputMethodEvent>
#include <QLineEdit>
#include <QMetaProperty>
#include <QMimeData>
#include <QSignalSpy>
#include <QTest>

#include <array>
#include <memory>
#include <vector>

#include "controls/bolsa_propiedades.h"
#include "controls/textextend.h"

class tst_textextend : public QObject {
    Q_OBJECT
private slots:
    void init();
    void cleanup() { window_.reset(); }

    void what_comes_in_goes_by_the_mode();
    void a_text_that_is_taken_back_leaves_no_trace();
    void the_host_sets_numbers_only();
    void a_locked_box_takes_nothing();
    void events_come_in_order();
    void the_host_filters_further();
    void leaving_completes_a_number();
    void entering_selects_the_text();
    void the_header_stands_above_the_entry();
    void the_tip_shows_a_text_that_does_not_fit();
    void unset_colours_read_in_dark_palettes();
    void properties_have_the_names_of_the_forms();
    void the_store_keeps_names_and_defaults();

private:
    enum Way { Typed, Pasted, Dropped, Composed };
    void mode(int number, bool signo) {
        box_->setNumberBox(number);
        box_->setSigno(signo);
    }
    void bring(Way way, const QString& text);
    void compose(const QString& preedit, const QString& commit) {
        QInputMethodEvent event(preedit, {});
        event.setCommitString(commit);
        QApplication::sendEvent(line_, &event);
    }
    void key(QEvent::Type type, int key, Qt::KeyboardModifiers modifiers, const QString& text) {
        QKeyEvent event(type, key, modifiers, text);
        QApplication::sendEvent(line_, &event);
    }

    std::unique_ptr<QWidget> window_;
    textextend* box_ = nullptr;
    QLineEdit* line_ = nullptr;
    QLineEdit* other_ = nullptr;
    bool dropped_ = false;  // whether the last drop was taken, so that its giver may delete the text
};

void tst_textextend::init() {
    window_ = std::make_unique<QWidget>();
    auto* row = new QHBoxLayout(window_.get());
    other_ = new QLineEdit;
    row->addWidget(other_);
    row->addWidget(box_ = new textextend);
    line_ = box_->entry();
    window_->resize(500, 80);
    window_->show();
    window_->activateWindow();
    QVERIFY(QTest::qWaitForWindowActive(window_.get()));
    box_->setFocus();
    QTRY_VERIFY(line_->hasFocus());
}

void tst_textextend::bring(Way way, const QString& text) {
    switch (way) {
        case Typed:
            for (const QChar c : text) {
                key(QEvent::KeyPress, c.toUpper().unicode(), Qt::NoModifier, c);
                key(QEvent::KeyRelease, c.toUpper().unicode(), Qt::NoModifier, c);
            }
            return;
        case Pasted:
            QApplication::clipboard()->setText(text);
            return QTest::keySequence(line_, QKeySequence::Paste);
        case Dropped: {
            QMimeData data;
            data.setText(text);
            line_->repaint();  // moves the text to its side
            const QPoint end(line_->width() - 3, 6);
            QDragEnterEvent entered(end, Qt::MoveAction, &data, Qt::LeftButton, {});
            QApplication::sendEvent(line_, &entered);
            QDropEvent event(end, Qt::MoveAction, &data, Qt::LeftButton, {});
            QApplication::sendEvent(line_, &event);
            dropped_ = event.isAccepted() && event.dropAction() == Qt::MoveAction;
            return;
        }
        case Composed:
            compose(text.left(1), {});
            return compose({}, text);
    }
}

namespace {

constexpr const char* NO = nullptr;  // the text stays

struct Mode {
    int number;
    bool signo;
};
constexpr std::array<Mode, 7> MODES{{{0, false}, {1, true}, {1, false}, {2, true}, {2, false}, {3, true}, {3, false}}};

struct Input {
    const char *before, *input;
    std::array<const char*, 7> after;  // in each of MODES
};

const std::vector<Input> TYPED{
    {"", "12.5", {"12.5", "125", "125", "12.5", "12.5", NO, NO}},
    {"", "-5", {"-5", "-5", "5", "-5", "5", NO, NO}},
    {"5", "-", {"5-", "5-", NO, "5-", NO, NO, NO}},
    {"5", "-3", {"5-3", "5-", "53", "5-", "53", NO, NO}},
    {"12", "-", {"12-", NO, NO, NO, NO, NO, NO}},
    {"12", "a3", {"12a3", "123", "123", "123", "123", "12a", "12a"}},
    {"", "CO 2\u00F1", {"CO 2\u00F1", "2", "2", "2", "2", "CO ", "CO "}},
    {"", "\u0661", {"\u0661", NO, NO, NO, NO, NO, NO}},
};

const std::vector<Input> AT_ONCE{
    {"", "66.051", {"66.051", NO, NO, "66.051", "66.051", NO, NO}},
    {"12", "3.5", {"123.5", NO, NO, "123.5", "123.5", NO, NO}},
    {"12", "34", {"1234", "1234", "1234", "1234", "1234", NO, NO}},
    {"", "12,5", {"12,5", NO, NO, NO, NO, NO, NO}},
    {"", "-7", {"-7", "-7", NO, "-7", NO, NO, NO}},
    {"", "7-", {"7-", "7-", NO, "7-", NO, NO, NO}},
    {"", "1e3", {"1e3", NO, NO, "1e3", "1e3", NO, NO}},
    {"4", "e", {"4e", NO, NO, NO, NO, "4e", "4e"}},
    {"", "Gas ideal", {"Gas ideal", NO, NO, NO, NO, "Gas ideal", "Gas ideal"}},
    {"", "di\u00F3xido", {"di\u00F3xido", NO, NO, NO, NO, NO, NO}},
    {"", "NH3", {"NH3", NO, NO, NO, NO, NO, NO}},
};

}  // namespace

void tst_textextend::what_comes_in_goes_by_the_mode() {
    QSignalSpy refused(box_, &textextend::refused);
    const auto check = [&](Way way, const Input& row, std::size_t at, bool over_selection) {
        mode(MODES[at].number, MODES[at].signo);
        const QString before = over_selection ? QStringLiteral("9") : QString::fromUtf8(row.before);
        const QString after = row.after[at] ? QString::fromUtf8(row.after[at]) : before;
        box_->setText(before);
        QCOMPARE(box_->Text(), before);
        line_->end(false);
        if (over_selection)
            line_->selectAll();
        refused.clear();
        bring(way, QString::fromUtf8(row.input));
        const QByteArray where = QStringLiteral("way %1, mode %2, sign %3: '%4' + '%5' gave '%6'")
                                     .arg(way)
                                     .arg(MODES[at].number)
                                     .arg(MODES[at].signo)
                                     .arg(before, QString::fromUtf8(row.input), box_->Text())
                                     .toUtf8();
        QVERIFY2(box_->Text() == after, where);
        QVERIFY2(line_->cursorPosition() == after.size() && !line_->hasSelectedText(), where);
        const bool told = way != Typed && !row.after[at] && QString::fromUtf8(row.input).size() > (way == Composed);
        QVERIFY2(refused.count() == (told ? 1 : 0), where);
        QVERIFY2(way != Dropped || dropped_ == (row.after[at] != NO), where);
        QTest::keySequence(line_, QKeySequence::Undo);
        QVERIFY2(box_->Text() == before, where + " undone to " + box_->Text().toUtf8());
        QTest::keySequence(line_, QKeySequence::Redo);
        QVERIFY2(way == Composed || box_->Text() == after, where + " redone to " + box_->Text().toUtf8());
    };
    for (std::size_t at = 0; at < MODES.size(); ++at) {
        for (const Input& row : TYPED)
            check(Typed, row, at, false);
        for (const Input& row : AT_ONCE)
            for (const Way way : {Pasted, Dropped, Composed}) {
                check(way, row, at, false);
                if (*row.before == '\0' && way != Dropped)
                    check(way, row, at, true);
            }
        if (QTest::currentTestFailed())
            return;
    }
    mode(2, true);
    box_->setText({});
    bring(Pasted, QStringLiteral(" 12.5 \r\n"));
    QCOMPARE(box_->Text(), "12.5");
    mode(0, true);
    box_->setText({});
    bring(Pasted, QStringLiteral("CO2\r\n[G7]"));
    QCOMPARE(box_->Text(), "CO2  [G7]");
}

void tst_textextend::a_text_that_is_taken_back_leaves_no_trace() {
    mode(2, false);
    QSignalSpy shown(line_, &QLineEdit::textChanged);
    QTest::keyClicks(line_, "15");
    bring(Pasted, QStringLiteral("abc"));
    QTest::keyClick(line_, Qt::Key_Left);
    bring(Pasted, QStringLiteral("e"));
    QCOMPARE(box_->Text(), "1e5");
    QTest::keyClick(line_, Qt::Key_Delete);  // "1e" is no number
    QTest::keyClicks(line_, "x-");
    QCOMPARE(box_->Text(), "1e5");
    QCOMPARE(shown.count(), 3);
    QStringList steps;
    while (line_->isUndoAvailable()) {
        QTest::keySequence(line_, QKeySequence::Undo);
        if (steps.isEmpty() || steps.back() != box_->Text())
            steps << box_->Text();
    }
    QCOMPARE(steps, QStringList({"15", ""}));

    mode(1, false);
    box_->setText(QStringLiteral("-52"));  // what the host set comes back although it could not be typed
    line_->selectAll();
    QTest::keyClicks(line_, "7");
    QTest::keySequence(line_, QKeySequence::Undo);
    QCOMPARE(box_->Text(), "-52");
    line_->setCursorPosition(2);
    QTest::keyClicks(line_, "e");
    QCOMPARE(box_->Text(), "-52");
    for (const char* text : {"-7", "7-"})  // but is not let in again
        for (const Way way : {Pasted, Composed}) {
            line_->selectAll();
            bring(way, QString::fromLatin1(text));
            QCOMPARE(box_->Text(), "-52");
        }

    mode(2, false);
    box_->setText(QStringLiteral("1.5"));
    line_->setSelection(1, 1);
    QTest::keyClick(line_, Qt::Key_Delete);
    mode(1, false);
    QTest::keySequence(line_, QKeySequence::Undo);
    QCOMPARE(box_->Text(), "15");

    mode(2, true);
    for (const auto& [composed, after] : {std::pair{"\u4F60", "15"}, {"7", "7"}}) {  // over a selection
        line_->selectAll();
        bring(Composed, QString::fromUtf8(composed));
        QCOMPARE(box_->Text(), after);
    }
}

void tst_textextend::the_host_sets_numbers_only() {
    mode(1, false);
    for (const auto& [set, held] : std::vector<std::pair<const char*, const char*>>{
             {"304.2", "304.2"}, {"abc", "304.2"}, {"-1", "-1"}, {"-", "-"}, {"1,5", "-"}, {"", ""}}) {
        box_->setText(QString::fromLatin1(set));
        QCOMPARE(box_->Text(), held);
        line_->setText(QString::fromLatin1(set));  // past the property
        QCOMPARE(box_->Text(), held);
    }
    box_->setText(QStringLiteral("-7.25 "));
    QCOMPARE(box_->value(), -7.25);
}

void tst_textextend::a_locked_box_takes_nothing() {
    box_->setText(QStringLiteral("1"));
    box_->setLocked(true);
    for (const Way way : {Typed, Pasted, Dropped, Composed}) {
        bring(way, QStringLiteral("2"));
        QVERIFY2(box_->Text() == "1", QByteArray::number(way));
    }
    connect(box_, &textextend::KeyPress, box_, [](std::int16_t& code) { code = '3'; });
    bring(Typed, QStringLiteral("2"));
    QCOMPARE(box_->Text(), "1");
}

void tst_textextend::events_come_in_order() {
    mode(1, true);
    QStringList log;
    const auto note = [&log](const char* event) {
        return [&log, event](auto... values) {
            QStringList line{QLatin1String(event)};
            (line.append(QString::number(values)), ...);
            log << line.join(u' ');
        };
    };
    connect(box_, &textextend::KeyDown, this, [&](auto code, auto shift) { note("KeyDown")(code, shift); });
    connect(box_, &textextend::KeyPress, this, [&](std::int16_t& code) { note("KeyPress")(code); });
    connect(box_, &textextend::KeyUp, this, [&](auto code, auto shift) { note("KeyUp")(code, shift); });
    connect(box_, &textextend::Change, this, [&] { log << "Change " + box_->Text(); });
    connect(box_, &textextend::Click, this, note("Click"));
    connect(box_, &textextend::DblClick, this, note("DblClick"));
    connect(box_, &textextend::MouseDown, this, note("MouseDown"));
    connect(box_, &textextend::MouseUp, this, note("MouseUp"));
    const auto since = [&log] { return std::exchange(log, {}).join(u'|'); };

    QTest::keyClick(line_, Qt::Key_5);
    QCOMPARE(since(), "KeyDown 53 0|KeyPress 53|Change 5|KeyUp 53 0");
    QTest::keyClick(line_, Qt::Key_A);
    QCOMPARE(since(), "KeyDown 65 0|KeyPress 97|KeyUp 65 0");
    QTest::keyClick(line_, Qt::Key_Period);
    QCOMPARE(since(), "KeyDown 190 0|KeyPress 0|KeyUp 190 0");
    QTest::keyClick(line_, Qt::Key_Left, Qt::ControlModifier);
    QCOMPARE(since(), "KeyDown 17 2|KeyDown 37 2|KeyUp 37 2|KeyUp 17 0");
    QTest::keyClick(line_, Qt::Key_Delete);
    QCOMPARE(since(), "KeyDown 46 0|Change |KeyUp 46 0");
    QTest::mouseClick(line_, Qt::RightButton, Qt::ControlModifier, {7, 5});
    QCOMPARE(since(), "MouseDown 2 2 7 5|MouseUp 2 2 7 5");
    QTest::mouseClick(line_, Qt::LeftButton, {}, {7, 5});
    QTest::mouseDClick(line_, Qt::LeftButton, {}, {7, 5});
    QTest::mouseRelease(line_, Qt::LeftButton, {}, {7, 5});
    QCOMPARE(since(), "MouseDown 1 0 7 5|MouseUp 1 0 7 5|Click|DblClick|MouseUp 1 0 7 5");
}

void tst_textextend::the_host_filters_further() {
    mode(2, true);
    connect(box_, &textextend::KeyPress, box_, [](std::int16_t& code) {
        if (code == '7')
            code = '8';
        else if (code == '1' || code == 8)
            code = 0;
    });
    connect(box_, &textextend::Change, box_, [this] {
        if (box_->Text() == "42")
            box_->setText(QStringLiteral("-42"));  // what the host sets goes by the host's rules
    });
    bring(Typed, QStringLiteral("17"));
    QTest::keyClick(line_, Qt::Key_Backspace);
    QCOMPARE(box_->Text(), "8");
    compose({}, QStringLiteral("17"));
    QCOMPARE(box_->Text(), "8");
    mode(1, false);
    line_->selectAll();
    bring(Typed, QStringLiteral("42"));
    QCOMPARE(box_->Text(), "-42");
    line_->setCursorPosition(2);
    bring(Typed, QStringLiteral("e"));
    QCOMPARE(box_->Text(), "-42");
}

void tst_textextend::leaving_completes_a_number() {
    QStringList log;
    connect(box_, &textextend::Change, this, [&] { log << "Change"; });
    connect(box_, &textextend::LostFocus, this, [&] { log << "LostFocus " + box_->Text(); });
    for (const int number : {0, 1, 2, 3})
        for (const QString& text : QStringList{"", "-", "5-", "7"}) {
            mode(number, true);
            box_->setText(text);
            box_->setFocus();
            log.clear();
            QFocusEvent menu(QEvent::FocusOut, Qt::PopupFocusReason);
            QApplication::sendEvent(line_, &menu);
            QCOMPARE(log, QStringList());
            other_->setFocus();
            const bool completed = (number == 1 || number == 2) && (text.isEmpty() || text == "-");
            QCOMPARE(log, completed ? QStringList({"Change", "LostFocus 0"}) : QStringList{"LostFocus " + text});
            QCOMPARE(box_->Text(), completed ? "0" : text);
        }
}

void tst_textextend::entering_selects_the_text() {
    box_->setText(QStringLiteral("304.2"));
    for (const bool select : {true, false})
        for (const bool by_mouse : {false, true}) {
            box_->setSelOnFocus(select);
            line_->deselect();
            other_->setFocus();
            if (by_mouse)
                QTest::mouseClick(line_, Qt::LeftButton);
            else
                QTest::keyClick(other_, Qt::Key_Tab);
            QTRY_VERIFY(line_->hasFocus());
            QCOMPARE(line_->selectedText(), select ? "304.2" : "");
        }
    QTest::mouseClick(line_, Qt::LeftButton);  // a click inside puts the caret
    QVERIFY(!line_->hasSelectedText());
}

void tst_textextend::the_header_stands_above_the_entry() {
    auto* label = box_->findChild<QLabel*>("lblHeader");
    QSignalSpy resized(box_, &textextend::Resize);
    QCOMPARE(box_->height(), other_->height());
    QCOMPARE(line_->geometry(), box_->rect());

    box_->setHeaderCaption(QStringLiteral("&Volumen crítico ( l ):"));
    box_->setHeader(true);
    QFont large = box_->Font();
    large.setPixelSize(31);
    for (const char* property : {"", "HeaderFont", "Font"}) {
        if (*property)
            box_->setProperty(property, large);
        QVERIFY(resized.count() > 0);
        resized.clear();
        const int header = label->fontMetrics().height();
        QCOMPARE(label->geometry(), QRect(0, 0, box_->width(), header));
        QCOMPARE(line_->geometry(), QRect(0, header, box_->width(), line_->sizeHint().height()));
        QCOMPARE(box_->height(), header + line_->height());
    }
    window_->resize(700, 200);
    QCOMPARE(line_->width(), box_->width());
    QCOMPARE(label->width(), box_->width());
    QVERIFY(resized.count() > 0);

    QCOMPARE(line_->accessibleName(), "Volumen crítico ( l )");
    other_->setFocus();
    QTest::keyClick(window_.get(), Qt::Key_V, Qt::AltModifier);
    QTRY_VERIFY(line_->hasFocus());
    box_->setHeader(false);
    QCOMPARE(line_->geometry(), box_->rect());
}

void tst_textextend::the_tip_shows_a_text_that_does_not_fit() {
    window_->resize(200, 80);
    const QString text(200, u'W');
    box_->setText(text);
    QCOMPARE(line_->toolTip(), text);
    box_->setText(QStringLiteral("W"));
    QCOMPARE(line_->toolTip(), "");
    box_->setText("<b>" + text);
    QVERIFY(line_->toolTip().contains("&lt;b&gt;W"));
    box_->setPasswordChar(QStringLiteral("*"));
    QCOMPARE(line_->toolTip(), "");
}

void tst_textextend::unset_colours_read_in_dark_palettes() {
    QPalette dark = window_->palette();
    dark.setColor(QPalette::Base, QColor(30, 30, 30));
    dark.setColor(QPalette::Window, QColor(45, 45, 45));
    auto* label = box_->findChild<QLabel*>("lblHeader");
    const QColor blue(40, 92, 208);
    QCOMPARE(line_->palette().color(QPalette::Text), blue);
    QCOMPARE(label->palette().color(QPalette::WindowText), blue);
    QCOMPARE(label->palette().color(QPalette::Window), QColor(Qt::white));
    window_->setPalette(dark);
    QVERIFY(line_->palette().color(QPalette::Text).lightness() > blue.lightness() + 30);
    QVERIFY(label->palette().color(QPalette::WindowText).lightness() > blue.lightness() + 30);
    QCOMPARE(label->palette().color(QPalette::Window), QColor(45, 45, 45));
    QCOMPARE(box_->ForeColor(), blue);
    box_->setForeColor(blue);
    QCOMPARE(line_->palette().color(QPalette::Text), blue);
}

namespace {

/// Every property in the order of the forms, with another value than the default.
std::vector<std::pair<const char*, QVariant>> other_values() {
    QPixmap icon(4, 4);
    icon.fill(Qt::red);
    return {{"Font", QFont("Courier", 15)},
            {"ForeColor", QColor(Qt::red)},
            {"BackColor", QColor(Qt::yellow)},
            {"Text", "12"},
            {"Alignment", 2},
            {"MousePointer", 11},
            {"MouseIcon", icon},
            {"Appearance", 0},
            {"BorderStyle", 0},
            {"NumberBox", 2},
            {"Signo", false},
            {"SelOnFocus", false},
            {"Enabled", false},
            {"Locked", true},
            {"PasswordChar", "*"},
            {"Header", true},
            {"HeaderAlignement", 0},
            {"HeaderForeColor", QColor(Qt::green)},
            {"HeaderBackColor", QColor(Qt::black)},
            {"HeaderFont", QFont("Courier", 9)},
            {"HeaderCaption", "Gas"}};
}

}  // namespace

void tst_textextend::properties_have_the_names_of_the_forms() {
    const QMetaObject& meta = textextend::staticMetaObject;
    int at = meta.propertyOffset();
    for (const auto& [name, value] : other_values()) {
        QCOMPARE(meta.property(at++).name(), name);
        QSignalSpy announced(box_, &textextend::PropertyChanged);
        QVERIFY(box_->property(name) != value || value.typeId() == QMetaType::QPixmap);
        QVERIFY(box_->setProperty(name, value));
        if (value.typeId() != QMetaType::QPixmap)
            QCOMPARE(box_->property(name), value);
        QCOMPARE(announced.count(), 1);
        QCOMPARE(announced.front().front().toString(), name);
    }
    QCOMPARE(at, meta.propertyCount());
    box_->setPasswordChar(QStringLiteral("#*"));
    QCOMPARE(box_->PasswordChar(), "#");
    QCOMPARE(line_->displayText(), "##");
    QVERIFY(box_->isEnabled() && !line_->isEnabled() && line_->isReadOnly() && !line_->hasFrame());
    QCOMPARE(line_->cursor().shape(), Qt::WaitCursor);
    box_->setMousePointer(99);
    QCOMPARE(line_->cursor().shape(), Qt::BitmapCursor);
    box_->setNumberBox(4);
    QCOMPARE(box_->NumberBox(), 2);
}

namespace {

/// Keeps everything and records in what order it is asked.
class RecordingStore final : public BolsaPropiedades {
public:
    void WriteProperty(const QString& name, const QVariant& value, const QVariant& omission) override {
        written << name + '=' + omission.toString();
        BolsaPropiedades::WriteProperty(name, value, omission);
    }
    QVariant ReadProperty(const QString& name, const QVariant& omission) const override {
        read << name + '=' + omission.toString();
        return BolsaPropiedades::ReadProperty(name, omission);
    }

    QStringList written;
    mutable QStringList read;
};

}  // namespace

void tst_textextend::the_store_keeps_names_and_defaults() {
    QStringList names = QStringLiteral(
                            "Text=|Alignement=1|Appearance=1|BorderStyle=1|MousePointer=0|MouseIcon=|NumberBox=0|Signo="
                            "true|Locked=0|Enabled=1|ForeColor=13655080|Backcolor=|Font=Ms Sans "
                            "Serif|PasswordChar=|SelOnFocus=1|Header=0|HeaderAlignement=1|HeaderForeColor=13655080|"
                            "HeaderBackColor=16777215|HeaderFont=Ms Sans Serif|HeaderCaption=Header")
                            .split(u'|');
    RecordingStore fresh;
    box_->WriteProperties(fresh);
    QCOMPARE(fresh.written, names);
    QCOMPARE(fresh.size(), 0);  // a new box has the defaults

    for (const auto& [name, value] : other_values())
        box_->setProperty(name, value);
    box_->setHeaderForeColor(QColor(40, 92, 208));  // the default again
    RecordingStore store;
    box_->WriteProperties(store);
    QCOMPARE(store.size(), 20);
    QCOMPARE(store.BolsaPropiedades::ReadProperty("backcolor", {}).toInt(), 0x00FFFF);

    textextend copy;
    copy.setNumberBox(1);
    copy.setHeaderForeColor(Qt::red);
    QSignalSpy announced(&copy, &textextend::PropertyChanged);
    copy.ReadProperties(store);
    QCOMPARE(announced.count(), 0);
    names.removeAt(13);
    names[11] = "BackColor=";
    QCOMPARE(store.read, names);
    QCOMPARE(copy.PasswordChar(), "");
    for (const auto& [name, value] : other_values())
        if (QString(name) != "PasswordChar" && value.typeId() != QMetaType::QPixmap)
            QCOMPARE(copy.property(name), box_->property(name));
}

QTEST_MAIN(tst_textextend)
#include "tst_textextend.moc"
