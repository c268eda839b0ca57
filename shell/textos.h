#pragma once
// Small helpers over captions.

#include <QString>

/// A caption as plain text, for tool tips and titles: "&Archivos" -> "Archivos", "a && b" -> "a & b".
QString sin_mnemonico(const QString& caption);

/// Plain text as a caption without a mnemonic: "a & b" -> "a && b".
QString como_caption(const QString& text);

/// A text with its %1 replaced; a text without one stays as it is.
QString con_valor(QString text, const QString& value);
