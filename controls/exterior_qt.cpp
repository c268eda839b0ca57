#include "controls/exterior_qt.h"

#include <QDesktopServices>
#include <QProcess>
#include <QStandardPaths>
#include <QUrl>

#if defined(Q_OS_WIN) || defined(Q_OS_MACOS)

bool ExteriorQt::abrir_direccion(const QString& direccion) {
    return QDesktopServices::openUrl(QUrl(direccion));
}

#else

namespace {

constexpr int LONGEST_WAIT_MS = 1000;

/// A browser of the user's choice, else a usual one; empty where none is installed.
QString browser() {
    QStringList names = qEnvironmentVariable("BROWSER").split(u':', Qt::SkipEmptyParts);
    names << QStringLiteral("x-www-browser") << QStringLiteral("firefox") << QStringLiteral("firefox-esr")
          << QStringLiteral("chromium") << QStringLiteral("google-chrome") << QStringLiteral("epiphany")
          << QStringLiteral("falkon") << QStringLiteral("konqueror");
    for (const QString& name : names) {
        if (const QString path = QStandardPaths::findExecutable(name); !path.isEmpty())
            return path;
    }
    return {};
}

/// Whether the desktop knows a program for web pages. One that does not answer in time counts as none: the user then
/// learns the address, where a browser that never comes would leave the click without any answer.
bool desktop_has_browser() {
    QProcess query;
    query.start(QStringLiteral("xdg-mime"),
                {QStringLiteral("query"), QStringLiteral("default"), QStringLiteral("x-scheme-handler/https")});
    if (query.waitForFinished(LONGEST_WAIT_MS))
        return !query.readAllStandardOutput().trimmed().isEmpty();
    query.kill();
    query.waitForFinished(LONGEST_WAIT_MS);
    return false;
}

}  // namespace

// QDesktopServices answers true as soon as xdg-open starts, which ends in silence where there is no browser.
bool ExteriorQt::abrir_direccion(const QString& direccion) {
    const QString opener = buscar_programa(QStringLiteral("xdg-open")), own = browser();
    if (!opener.isEmpty() && (!own.isEmpty() || desktop_has_browser()))
        return ejecutar(opener, {direccion});
    return !own.isEmpty() && ejecutar(own, {direccion});
}

#endif

QString ExteriorQt::buscar_programa(const QString& nombre) {
    return QStandardPaths::findExecutable(nombre);
}

bool ExteriorQt::ejecutar(const QString& programa, const QStringList& argumentos) {
    return QProcess::startDetached(programa, argumentos);
}
