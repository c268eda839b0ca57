#include "shell/ayuda/buscador.h"

#include <algorithm>
#include <optional>

namespace {

constexpr qsizetype BEFORE = 50, AFTER = 120;  // characters of a snippet around its first word

QString text_of(const std::string& utf8) {
    return QString::fromStdString(utf8);
}

/// The text around a place, cut at blanks.
QString snippet_at(const QString& text, qsizetype place) {
    qsizetype begin = std::max<qsizetype>(0, place - BEFORE);
    qsizetype end = std::min(text.size(), place + AFTER);
    if (begin > 0) {
        const qsizetype blank = text.indexOf(u' ', begin);
        begin = blank >= 0 && blank < place ? blank + 1 : begin;
    }
    if (end < text.size()) {
        const qsizetype blank = text.lastIndexOf(u' ', end);
        end = blank > place ? blank : end;
    }
    QString snippet = text.mid(begin, end - begin).simplified();
    if (begin > 0)
        snippet.prepend(QStringLiteral("… "));
    if (end < text.size())
        snippet.append(QStringLiteral(" …"));
    return snippet;
}

struct Score {
    qsizetype in_title = 0, occurrences = 0;
    qsizetype first = -1;  // place of the first word in the text
};

}  // namespace

QString titulo_de_pagina(const std::string& html, const std::string& name) {
    const QString title = text_of(tavo::chm::page_title(html)).simplified();
    return title.isEmpty() ? text_of(name).section(u'/', -1) : title;
}

Buscador::Buscador(const tavo::chm::ChmFile& file) : file_(file) {}

void Buscador::read_pages() {
    read_ = true;
    for (const std::string& name : file_.pages()) {
        std::optional<std::string> bytes;
        try {
            bytes = file_.read(name);
        } catch (const tavo::chm::DamagedHelp&) {
            continue;
        }
        if (!bytes)
            continue;
        const std::string html = tavo::chm::decode_page(*bytes);
        const QString title = titulo_de_pagina(html, name);
        const QString text = text_of(tavo::chm::plain_text(html));
        pages_.push_back({text_of(name), title, text, plegado(title), TextoPlegado(text)});
    }
}

QList<Hallazgo> Buscador::buscar(const QString& query) {
    const QStringList words = palabras_plegadas(query);
    if (words.isEmpty())
        return {};
    if (!read_)
        read_pages();

    const auto score_of = [&words](const Page& page) -> std::optional<Score> {
        Score score;
        for (const QString& word : words) {
            const bool in_title = page.folded_title.contains(word);
            const QList<Tramo> places = page.folded.find(word);
            if (!in_title && places.isEmpty())
                return std::nullopt;
            score.in_title += in_title ? 1 : 0;
            score.occurrences += places.size();
            if (!places.isEmpty() && (score.first < 0 || places.front().begin < score.first))
                score.first = places.front().begin;
        }
        return score;
    };
    std::vector<std::pair<Score, const Page*>> found;
    for (const Page& page : pages_) {
        if (const auto score = score_of(page))
            found.emplace_back(*score, &page);
    }
    std::ranges::stable_sort(found, [](const auto& a, const auto& b) {
        return std::pair(a.first.in_title, a.first.occurrences) > std::pair(b.first.in_title, b.first.occurrences);
    });

    QList<Hallazgo> results;
    for (const auto& [score, page] : found)
        results.append({page->name, page->title, snippet_at(page->text, std::max<qsizetype>(0, score.first))});
    return results;
}
