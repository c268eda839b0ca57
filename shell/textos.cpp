#include "shell/textos.h"

#include "core/models.h"
#include "shell/application_state.h"

QString sin_mnemonico(const QString& caption) {
    QString plain;
    plain.reserve(caption.size());
    for (qsizetype i = 0; i < caption.size(); ++i) {
        if (caption[i] == u'&' && i + 1 < caption.size())
            ++i;
        plain.append(caption[i]);
    }
    return plain;
}

QString como_caption(const QString& text) {
    QString caption = text;
    return caption.replace(u'&', QStringLiteral("&&"));
}

QString con_valor(QString text, const QString& value) {
    return text.replace(QStringLiteral("%1"), value);
}

QStringList nombres_modelos(const ApplicationState& estado) {
    QStringList names;
    for (const tavo::Model& model : tavo::models())
        names << (model.caption.empty() ? estado.texto(model.caption_string) : QString::fromUtf8(model.caption));
    return names;
}
