#include "shell/mensajes_qt.h"

#include <QApplication>
#include <QInputDialog>
#include <QLineEdit>
#include <QMessageBox>

#include "core/errors.h"
#include "shell/application_state.h"

namespace {

constexpr int YES_NO_CANCEL = 3;
constexpr int YES_NO = 4;

QMessageBox::Icon icon_of(int estilo) {
    switch (estilo & 0xF0) {
        case 16:
            return QMessageBox::Critical;
        case 32:
            return QMessageBox::Question;
        case 48:
            return QMessageBox::Warning;
        case 64:
            return QMessageBox::Information;
        default:
            return QMessageBox::NoIcon;
    }
}

QMessageBox::StandardButtons buttons_of(int estilo) {
    switch (estilo & 0x0F) {
        case YES_NO_CANCEL:
            return QMessageBox::Yes | QMessageBox::No | QMessageBox::Cancel;
        case YES_NO:
            return QMessageBox::Yes | QMessageBox::No;
        default:
            return QMessageBox::Ok;
    }
}

Respuesta answer_of(int button, int estilo) {
    switch (button) {
        case QMessageBox::Yes:
            return Respuesta::Si;
        case QMessageBox::No:
            return Respuesta::No;
        default:
            return es_pregunta(estilo) ? Respuesta::Cancelar : Respuesta::Aceptar;
    }
}

struct Sentence {
    int number;
    const char* spanish;
};

Sentence sentence_of(const std::exception& error) {
    if (dynamic_cast<const tavo::FileNotFound*>(&error))
        return {525, "Falta un archivo del programa."};
    if (dynamic_cast<const tavo::InvalidArgument*>(&error) || dynamic_cast<const tavo::Overflow*>(&error))
        return {526, "Un archivo no tiene la forma esperada."};
    if (dynamic_cast<const tavo::FloatingPointError*>(&error))
        return {527, "El cálculo no da un resultado finito."};
    if (dynamic_cast<const tavo::RewriteRefused*>(&error))
        return {528, "No se ha podido guardar; el archivo sigue como estaba."};
    return {529, "Ha ocurrido un error inesperado."};
}

QString translated(const Sentence& sentence, const ApplicationState& estado) {
    QString spanish = QString::fromUtf8(sentence.spanish);
    try {
        return estado.texto(sentence.number, spanish);
    } catch (const std::exception&) {
        return spanish;
    }
}

}  // namespace

Respuesta MensajesQt::mostrar(const QString& texto, int estilo, const QString& titulo) {
    QMessageBox box(QApplication::activeWindow());
    box.setIcon(icon_of(estilo));
    box.setWindowTitle(titulo.isEmpty() ? QStringLiteral("TAVO-GAS") : titulo);
    box.setTextFormat(Qt::PlainText);
    box.setText(texto);
    box.setStandardButtons(buttons_of(estilo));
    if (box.standardButtons() == (QMessageBox::Yes | QMessageBox::No)) {  // what is lost is lost only on purpose
        box.setDefaultButton(QMessageBox::No);
        box.setEscapeButton(QMessageBox::No);
    }
    return answer_of(box.exec(), estilo);
}

std::optional<QString> MensajesQt::pedir(const QString& texto, const QString& titulo, const QString& propuesta) {
    bool accepted = false;
    const QString answer =
        QInputDialog::getText(QApplication::activeWindow(), titulo, texto, QLineEdit::Normal, propuesta, &accepted);
    return accepted ? std::optional(answer) : std::nullopt;
}

QString mensaje_de_error(const std::exception& error, const ApplicationState& estado) {
    return translated(sentence_of(error), estado) + QStringLiteral("\n\n") + QString::fromUtf8(error.what());
}
