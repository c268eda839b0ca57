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
};
