#pragma once
// Where a form keeps the properties of its controls.

#include <QMap>
#include <QString>
#include <QVariant>

/// Values under names that compare without regard to case. A value equal to its default is not kept: reading gives the
/// default again.
class BolsaPropiedades {
public:
    virtual ~BolsaPropiedades() = default;

    virtual void WriteProperty(const QString& name, const QVariant& value, const QVariant& omission);
    virtual QVariant ReadProperty(const QString& name, const QVariant& omission) const;

    qsizetype size() const { return values_.size(); }

private:
    QMap<QString, QVariant> values_;  // by the name in lower case
};
