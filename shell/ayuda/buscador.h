#pragma once
// Full-text search through all pages of a help file.

#include <QList>
#include <QString>

#include <vector>

#include "shell/ayuda/texto_plegado.h"
#include "shell/chm/chm_file.h"

/// A page that holds all words.
struct Hallazgo {
    QString page, title, snippet;
};

class Buscador {
public:
    /// The file outlives it. Pages are read at the first search, all at once; one that cannot be read is left out.
    explicit Buscador(const tavo::chm::ChmFile& file);

    /// Pages with all words, in title or text, without regard to accents and case: those with most words in their
    /// title first, then those with most occurrences, then in the order of the contents. No words find nothing.
    QList<Hallazgo> buscar(const QString& query);

private:
    struct Page {
        QString name, title, text;
        QString folded_title;
        TextoPlegado folded;
    };
    void read_pages();

    const tavo::chm::ChmFile& file_;
    bool read_ = false;
    std::vector<Page> pages_;
};

/// Title of a page as shown in lists: its <title>, else its name.
QString titulo_de_pagina(const std::string& html, const std::string& name);
