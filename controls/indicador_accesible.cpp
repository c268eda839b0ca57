#include "controls/indicador_accesible.h"

#include <QAccessibleWidget>

#include "controls/indicador.h"

namespace {

class IndicadorAccesible final : public QAccessibleWidget, public QAccessibleValueInterface {
public:
    explicit IndicadorAccesible(Indicador* instrument)
        : QAccessibleWidget(instrument, instrument->role()), instrument_(instrument) {}

    void* interface_cast(QAccessible::InterfaceType type) override {
        if (type == QAccessible::ValueInterface)
            return static_cast<QAccessibleValueInterface*>(this);
        return QAccessibleWidget::interface_cast(type);
    }

    QString text(QAccessible::Text what) const override {
        return what == QAccessible::Value ? instrument_->spoken_value() : QAccessibleWidget::text(what);
    }

    QVariant currentValue() const override { return instrument_->reachable(instrument_->value()); }
    void setCurrentValue(const QVariant& value) override {
        emit instrument_->key_step(instrument_->reachable(value.toDouble()));
    }
    QVariant maximumValue() const override { return instrument_->scale().maximum; }
    QVariant minimumValue() const override { return instrument_->scale().minimum; }
    QVariant minimumStepSize() const override { return instrument_->scale().graduation / 10.0; }

private:
    Indicador* instrument_;
};

QAccessibleInterface* interface_of(const QString&, QObject* object) {
    auto* instrument = qobject_cast<Indicador*>(object);
    return instrument ? new IndicadorAccesible(instrument) : nullptr;
}

}  // namespace

void install_indicator_accessibility() {
    QAccessible::installFactory(interface_of);  // which ignores a factory that it has
}
