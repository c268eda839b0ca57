#pragma once
// A program folder of a test's own: copies of the shipped gas database and language table, gone with the object.

#include <QByteArray>
#include <QString>
#include <QTemporaryDir>

#include <filesystem>

class HogarTemporal {
public:
    /// Copies the two shipped files; throws when that fails.
    HogarTemporal();

    std::filesystem::path path() const;
    QByteArray read(const QString& name) const;
    /// Replaces a file, by default one of the two copies ("data", "idioma.lng").
    void write(const QString& name, const QByteArray& bytes) const;

private:
    QTemporaryDir folder_;
};
