#include "tests/windows/support/hogar_temporal.h"

#include <QFile>

#include <stdexcept>

HogarTemporal::HogarTemporal() {
    const std::filesystem::path shipped = std::filesystem::path(TAVO_SOURCE_DIR) / "data";
    for (const char* name : {"data", "idioma.lng"})
        std::filesystem::copy_file(shipped / name, path() / name);
}

std::filesystem::path HogarTemporal::path() const {
    return folder_.path().toStdString();
}

QByteArray HogarTemporal::read(const QString& name) const {
    QFile file(folder_.filePath(name));
    if (!file.open(QIODevice::ReadOnly))
        throw std::runtime_error("cannot read " + name.toStdString());
    return file.readAll();
}

void HogarTemporal::write(const QString& name, const QByteArray& bytes) const {
    QFile file(folder_.filePath(name));
    if (!file.open(QIODevice::WriteOnly) || file.write(bytes) != bytes.size())
        throw std::runtime_error("cannot write " + name.toStdString());
}
