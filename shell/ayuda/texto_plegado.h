#pragma once
// Text as a search sees it: without accents and case, every blank a space.

#include <QList>
#include <QString>
#include <QStringList>

/// A stretch of the source text.
struct Tramo {
    qsizetype begin, length;
    bool operator==(const Tramo&) const = default;
};

/// "Área" is "area", "Maße" is "masse", "cm³" is "cm3"; each character knows where in the source it came from.
class TextoPlegado {
public:
    explicit TextoPlegado(const QString& source);

    const QString& text() const { return text_; }
    /// The stretches of the source where the folded `word` stands, in order and apart from each other.
    QList<Tramo> find(const QString& word) const;

private:
    void append(const QString& source, qsizetype at, qsizetype length);

    QString text_;
    QList<qsizetype> origin_;  // of each character of text_, and the end of the source
};

QString plegado(const QString& source);
/// The folded words of a query, each once.
QStringList palabras_plegadas(const QString& query);
