#include "windows/lab/instrumento_accesible.h"

#include <QAccessibleWidget>

#include "windows/lab/instrumentos.h"

namespace {

class InstrumentoAccesible final : public QAccessibleWidget, public QAccessibleValueInterface {
public:
    explicit InstrumentoAccesible(Instrumento* instrument)
        : QAccessibleWidget(instrument, instrument->kind() == laboratorio::Instrument::Manometer ? QAccessible::Dial
                                                                                                 : QAccessible::Slider),
          instrument_(instrument) {}

    void* interface_cast(QAccessible::InterfaceType type) override {
        if (type == QAccessible::ValueInterface)
            return static_cast<QAccessibleValueInterface*>(this);
        return QAccessibleWidget::interface_cast(type);
    }

    QString text(QAccessible::Text what) const override {
        return what == QAccessible::Value ? instrument_->spoken_value() : QAccessibleWidget::text(what);
    }

    QVariant currentValue() const override { return laboratorio::pinned(instrument_->kind(), instrument_->value()); }
    void setCurrentValue(const QVariant& value) override {
        emit instrument_->key_step(laboratorio::pinned(instrument_->kind(), value.toDouble()));
    }
    QVariant maximumValue() const override { return laboratorio::scale(instrument_->kind()).maximum; }
    QVariant minimumValue() const override { return laboratorio::scale(instrument_->kind()).minimum; }
    QVariant minimumStepSize() const override { return laboratorio::scale(instrument_->kind()).graduation / 10.0; }

private:
    Instrumento* instrument_;
};

QAccessibleInterface* interface_of(const QString&, QObject* object) {
    auto* instrument = qobject_cast<Instrumento*>(object);
    return instrument ? new InstrumentoAccesible(instrument) : nullptr;
}

}  // namespace

void install_instrument_accessibility() {
    QAccessible::installFactory(interface_of);  // which ignores a factory that it has
}
