#pragma once
// A compiled help file of a test's own.

#include <QByteArray>
#include <QList>
#include <QString>

#include <filesystem>

struct PaginaDePrueba {
    QString name;   // "a.html"
    QString title;  // also its line in the contents, which are flat, and its keyword
    QString body;   // HTML
    QString head = {};
};

/// Compiles the pages, of which the first is the default one, and other files of theirs.
void compilar_ayuda(const std::filesystem::path& target, const QList<PaginaDePrueba>& pages,
                    const QList<std::pair<QString, QByteArray>>& files = {});
