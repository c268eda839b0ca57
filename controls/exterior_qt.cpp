#include "controls/exterior_qt.h"

#include <QDesktopServices>
#include <QProcess>
#include <QStandardPaths>
#include <QUrl>

bool ExteriorQt::abrir_direccion(const QString& direccion) {
    return QDesktopServices::openUrl(QUrl(direccion));
}

QString ExteriorQt::buscar_programa(const QString& nombre) {
    return QStandardPaths::findExecutable(nombre);
}

bool ExteriorQt::ejecutar(const QString& programa, const QStringList& argumentos) {
    return QProcess::startDetached(programa, argumentos);
}
