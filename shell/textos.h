#pragma once
// Small helpers over captions and texts that several windows show.

#include <QString>
#include <QStringList>

class ApplicationState;

/// A caption as plain text, for tool tips and titles: "&Archivos" -> "Archivos", "a && b" -> "a & b".
QString sin_mnemonico(const QString& caption);

/// Plain text as a caption without a mnemonic: "a & b" -> "a && b".
QString como_caption(const QString& text);

/// A text with its %1 replaced; a text without one stays as it is.
QString con_valor(QString text, const QString& value);

/// Names of the ten models in the active language, in the order of the model lists.
QStringList nombres_modelos(const ApplicationState& estado);
