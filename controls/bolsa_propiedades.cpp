#include "controls/bolsa_propiedades.h"

namespace {

/// Truth values have defaults that are written as numbers.
bool same(const QVariant& value, const QVariant& omission) {
    if (value.typeId() == QMetaType::Bool)
        return value.toBool() == omission.toBool();
    return value == omission;
}

}  // namespace

void BolsaPropiedades::WriteProperty(const QString& name, const QVariant& value, const QVariant& omission) {
    if (same(value, omission))
        values_.remove(name.toLower());
    else
        values_.insert(name.toLower(), value);
}

QVariant BolsaPropiedades::ReadProperty(const QString& name, const QVariant& omission) const {
    return values_.value(name.toLower(), omission);
}
