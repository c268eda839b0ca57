#include "shell/ayuda/texto_plegado.h"

#include <algorithm>

namespace {

constexpr char16_t SOFT_HYPHEN = 0x00AD;

bool is_mark(QChar c) {
    return c.category() == QChar::Mark_NonSpacing || c.unicode() == SOFT_HYPHEN;
}

}  // namespace

TextoPlegado::TextoPlegado(const QString& source) {
    text_.reserve(source.size());
    origin_.reserve(source.size() + 1);
    for (qsizetype at = 0; at < source.size();) {
        const bool pair = source[at].isHighSurrogate() && at + 1 < source.size();
        const qsizetype length = pair ? 2 : 1;
        append(source, at, length);
        at += length;
    }
    origin_.append(source.size());
}

void TextoPlegado::append(const QString& source, qsizetype at, qsizetype length) {
    const QChar c = source[at];
    if (c.unicode() < 0x80) {
        text_.append(c.isSpace() ? QChar(u' ') : c.toLower());
        origin_.append(at);
        return;
    }
    const QString whole = source.mid(at, length).normalized(QString::NormalizationForm_KD).toCaseFolded();
    for (const QChar part : whole) {
        if (is_mark(part))
            continue;
        text_.append(part.isSpace() ? QChar(u' ') : part);
        origin_.append(at);
    }
}

QList<Tramo> TextoPlegado::find(const QString& word) const {
    QList<Tramo> found;
    if (word.isEmpty())
        return found;
    for (qsizetype at = text_.indexOf(word); at >= 0; at = text_.indexOf(word, at + word.size())) {
        const qsizetype begin = origin_[at], last = origin_[at + word.size() - 1];
        // Up to the next character, so that marks go with their letter; half of a folded "ss" takes the whole letter.
        const qsizetype end = std::max(origin_[at + word.size()], last + 1);
        found.append({begin, end - begin});
    }
    return found;
}

QString plegado(const QString& source) {
    return TextoPlegado(source).text();
}

QStringList palabras_plegadas(const QString& query) {
    QStringList words = plegado(query).split(u' ', Qt::SkipEmptyParts);
    words.removeDuplicates();
    return words;
}
