#include "tests/windows/support/ayuda_de_prueba.h"

#include <QDir>
#include <QFile>
#include <QProcess>
#include <QStringList>
#include <QTemporaryDir>

#include <stdexcept>

namespace {

void write(const QString& path, const QByteArray& bytes) {
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly) || file.write(bytes) != bytes.size())
        throw std::runtime_error("cannot write " + path.toStdString());
}

QString sitemap(const QList<PaginaDePrueba>& pages) {
    QString items;
    for (const PaginaDePrueba& page : pages)
        items += QStringLiteral(
                     "<li><object type=\"text/sitemap\"><param name=\"Name\" value=\"%1\">"
                     "<param name=\"Local\" value=\"%2\"></object>\n")
                     .arg(page.title, page.name);
    return QStringLiteral("<html><body><ul>\n%1</ul></body></html>\n").arg(items);
}

}  // namespace

void compilar_ayuda(const std::filesystem::path& target, const QList<PaginaDePrueba>& pages,
                    const QList<std::pair<QString, QByteArray>>& files) {
    const QTemporaryDir folder;
    QStringList names;
    for (const PaginaDePrueba& page : pages) {
        names << page.name;
        write(folder.filePath(page.name), QStringLiteral("<html><head><title>%1</title>%3</head><body>%2</body></html>")
                                              .arg(page.title, page.body, page.head)
                                              .toLatin1());
    }
    for (const auto& [name, bytes] : files) {
        names << name;
        write(folder.filePath(name), bytes);
    }
    write(folder.filePath("help.hhc"), sitemap(pages).toLatin1());
    write(folder.filePath("help.hhk"), sitemap(pages).toLatin1());
    write(folder.filePath("help.hhp"),
          QStringLiteral("[OPTIONS]\nCompiled file=help.chm\nContents file=help.hhc\nIndex file=help.hhk\n"
                         "Default topic=%1\nTitle=Prueba\n\n[FILES]\n%2\n")
              .arg(names.front(), names.join(u'\n'))
              .toLatin1());
    QProcess compiler;
    compiler.setWorkingDirectory(folder.path());
    compiler.start(QStringLiteral(TAVO_CHMCMD), {QStringLiteral("help.hhp")});
    compiler.waitForFinished();
    QFile::remove(QString::fromStdString(target.string()));
    if (!QFile::copy(folder.filePath("help.chm"), QString::fromStdString(target.string())))
        throw std::runtime_error("no help compiled: " + compiler.readAll().toStdString());
}
