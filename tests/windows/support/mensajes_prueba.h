#pragma once
// Message boxes of a test: records every box and answers with the prepared ones.

#include <QTest>

#include <deque>
#include <vector>

#include "shell/mensajes.h"

struct Caja {
    QString texto;
    int estilo;
    QString titulo;
};

class MensajesPrueba final : public Mensajes {
public:
    std::vector<Caja> vistos;
    std::deque<Respuesta> respuestas;
    QStringList nombres;     // answers to the input box; a null one gives up
    QStringList propuestas;  // what the input box proposed

    Respuesta mostrar(const QString& texto, int estilo, const QString& titulo) override {
        vistos.push_back({texto, estilo, titulo});
        if (!es_pregunta(estilo))
            return Respuesta::Aceptar;
        if (!respuestas.empty()) {
            const Respuesta answer = respuestas.front();
            respuestas.pop_front();
            return answer;
        }
        QTest::qFail(qPrintable(QStringLiteral("unexpected question: ") + texto), __FILE__, __LINE__);
        return Respuesta::Cancelar;  // a failure, not a hang
    }

    std::optional<QString> pedir(const QString&, const QString&, const QString& propuesta) override {
        propuestas << propuesta;
        const QString name = nombres.isEmpty() ? QString() : nombres.takeFirst();
        return name.isNull() ? std::nullopt : std::optional(name);
    }
};
