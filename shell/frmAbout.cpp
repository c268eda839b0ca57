#include "shell/frmAbout.h"

#include <QClipboard>
#include <QCloseEvent>
#include <QDialogButtonBox>
#include <QFileInfo>
#include <QFrame>
#include <QGuiApplication>
#include <QHBoxLayout>
#include <QPushButton>
#include <QVBoxLayout>

#include "controls/iconos.h"
#include "shell/creditos.h"
#include "shell/textos.h"
#include "tavo_version.h"

namespace {

constexpr int PLAIN = 0, YES_OR_NO = 36;
constexpr int ICON = 64;
constexpr int TEXT_WIDTH = 60;  // of the paragraphs, in digits

QFrame* linea(QWidget* padre) {
    auto* line = new QFrame(padre);
    line->setFrameStyle(QFrame::HLine | QFrame::Sunken);
    return line;
}

}  // namespace

frmAbout::frmAbout(ApplicationState& estado, Mensajes& mensajes, Exterior& exterior,
                   std::unique_ptr<sysinfo::Registro> registro, QWidget* padre)
    : QDialog(padre), estado_(estado), mensajes_(mensajes), exterior_(exterior), registro_(std::move(registro)) {
    setObjectName(QStringLiteral("frmAbout"));
    crear();
    colocar();
    Form_Load();
}

QLabel* frmAbout::etiqueta(const char* name, double size, bool bold) {
    auto* label = new QLabel(this);
    label->setObjectName(QString::fromLatin1(name));
    label->setTextFormat(Qt::PlainText);
    QFont font = label->font();
    font.setPointSizeF(font.pointSizeF() * size);
    font.setBold(bold);
    label->setFont(font);
    return label;
}

void frmAbout::crear() {
    picIcon = etiqueta("picIcon");
    picIcon->setPixmap(icono_del_programa().pixmap(QSize(ICON, ICON), devicePixelRatioF()));
    lblTitle = etiqueta("lblTitle", 2.0, true);
    lblVersion = etiqueta("lblVersion", 1.0, true);
    lblQt = etiqueta("lblQt");
    lblDescription = etiqueta("lblDescription");
    Label1 = etiqueta("Label1");
    Label2 = etiqueta("Label2");
    Label3 = etiqueta("Label3");
    lblDisclaimer = etiqueta("lblDisclaimer", 0.9);
    for (QLabel* paragraph : {lblDescription, lblDisclaimer}) {
        paragraph->setWordWrap(true);
        paragraph->setMinimumWidth(TEXT_WIDTH * fontMetrics().horizontalAdvance(u'0'));
    }
    Label4 = new EtiquetaEnlace(creditos::DIRECCION, this);
    Label4->setObjectName(QStringLiteral("Label4"));
    cmdSysInfo = new QPushButton(this);
    cmdSysInfo->setObjectName(QStringLiteral("cmdSysInfo"));
    cmdSysInfo->setAutoDefault(false);
    connect(cmdSysInfo, &QPushButton::clicked, this, &frmAbout::cmdSysInfo_Click);
    connect(Label4, &EtiquetaEnlace::Click, this, &frmAbout::Label4_Click);
}

void frmAbout::colocar() {
    auto* names = new QVBoxLayout;
    names->setSpacing(3);
    for (QWidget* line : {lblTitle, lblVersion, lblQt})
        names->addWidget(line);
    auto* head = new QHBoxLayout;
    head->setSpacing(18);
    head->addWidget(picIcon, 0, Qt::AlignTop);
    head->addLayout(names, 1);

    auto* credits = new QVBoxLayout;
    credits->setSpacing(3);
    for (QWidget* line : {Label1, Label2, Label3})
        credits->addWidget(line);
    credits->addWidget(Label4, 0, Qt::AlignLeft);

    auto* buttons = new QDialogButtonBox(QDialogButtonBox::Ok, this);
    cmdOK = buttons->button(QDialogButtonBox::Ok);
    cmdOK->setObjectName(QStringLiteral("cmdOK"));
    cmdOK->setDefault(true);
    cmdOK->setIcon(QIcon());  // some styles add one of another family
    connect(cmdOK, &QPushButton::clicked, this, &frmAbout::cmdOK_Click);
    auto* foot = new QHBoxLayout;
    foot->addWidget(cmdSysInfo);
    foot->addStretch();
    foot->addWidget(buttons);

    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(18, 18, 18, 12);
    column->setSpacing(12);
    column->addLayout(head);
    column->addWidget(lblDescription);
    column->addWidget(linea(this));
    column->addLayout(credits);
    column->addWidget(linea(this));
    column->addWidget(lblDisclaimer);
    column->addStretch();
    column->addLayout(foot);
    setTabOrder(cmdOK, cmdSysInfo);
    setTabOrder(cmdSysInfo, Label4);
    cmdOK->setFocus();
}

void frmAbout::Form_Load() {
    setWindowTitle(estado_.texto(60));
    lblTitle->setText(QStringLiteral("TAVO-GAS"));
    lblVersion->setText(con_valor(estado_.texto(61), QStringLiteral(TAVO_VERSION)));
    lblQt->setText(con_valor(estado_.texto(833, QStringLiteral("Qt %1")), QString::fromLatin1(qVersion())));
    lblDescription->setText(estado_.texto(62));
    lblDisclaimer->setText(estado_.texto(63));
    Label1->setText(creditos::programa(estado_));
    Label2->setText(creditos::fisica(estado_));
    Label3->setText(creditos::departamento(estado_));
    Label4->setToolTip(estado_.texto(831, QStringLiteral("Abrir la página en el navegador")));
    cmdSysInfo->setText(estado_.texto(64));

    // Qt would begin with two thirds of a small screen, and cut lines off.
    const int width = layout()->totalSizeHint().width();
    setMinimumSize(width, layout()->totalHeightForWidth(width));
    resize(minimumSize());
}

void frmAbout::cmdSysInfo_Click() {
    if (!StartSysInfo())
        mensajes_.mostrar(estado_.texto(184), PLAIN, {});
}

bool frmAbout::StartSysInfo() {
    if (registro_) {
        const auto exists = [](const std::string& path) { return QFileInfo::exists(QString::fromStdString(path)); };
        const std::string path = sysinfo::programa_del_registro(*registro_, exists);
        return !path.empty() && exterior_.ejecutar(QString::fromStdString(path), {});
    }
    for (const sysinfo::Programa& program : sysinfo::programas(qgetenv("XDG_CURRENT_DESKTOP").toStdString())) {
        const QString path = exterior_.buscar_programa(QString::fromStdString(program.nombre));
        QStringList arguments;
        for (const std::string& argument : program.argumentos)
            arguments << QString::fromStdString(argument);
        if (!path.isEmpty() && exterior_.ejecutar(path, arguments))
            return true;
    }
    return false;
}

void frmAbout::Label4_Click() {
    if (exterior_.abrir_direccion(creditos::DIRECCION))
        return;
    const QString question = estado_.texto(
        832, QStringLiteral("No se ha podido abrir ningún navegador. La dirección es %1. ¿Copiarla al portapapeles?"));
    if (mensajes_.mostrar(con_valor(question, creditos::DIRECCION), YES_OR_NO, {}) == Respuesta::Si)
        QGuiApplication::clipboard()->setText(creditos::DIRECCION);
}

void frmAbout::cmdOK_Click() {
    close();
}

void frmAbout::reject() {
    close();
}

void frmAbout::closeEvent(QCloseEvent* event) {
    event->accept();  // QDialog's own would ask reject again
}
