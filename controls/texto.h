#pragma once
// How widgets that know nothing of the program's state get their texts.

#include <QString>

#include <functional>

/// Text of a number of the language table, and the literal to fall back on.
using Texto = std::function<QString(int number, const QString& literal)>;

/// A caption as a screen reader says it: "Te&mperatura:" -> "Temperatura".
inline QString spoken(QString caption) {
    caption.remove(u'&');
    while (caption.endsWith(u':') || caption.endsWith(u' ') || caption.endsWith(QChar::Nbsp))
        caption.chop(1);
    return caption;
}
