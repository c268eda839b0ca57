#pragma once
// The entry box of the editing windows: one line with an optional header above it and a filter on what is typed.

#include <QColor>
#include <QCursor>
#include <QFont>
#include <QLabel>
#include <QLineEdit>
#include <QPixmap>
#include <QString>
#include <QVariantMap>
#include <QWidget>

/// What may be typed.
enum class Filtro : std::int16_t { Free = 0, Integer = 1, Decimal = 2, Letters = 3 };

/// Entry `Txt` below the label `lblHeader`. Properties, events and stored names are those of forms that were saved with
/// it; their spelling is part of the interface.
class textextend : public QWidget {
    Q_OBJECT
    Q_PROPERTY(QFont Font READ Font WRITE setFont_ NOTIFY PropertyChanged)
    Q_PROPERTY(QString Text READ Text WRITE setText NOTIFY PropertyChanged)
    Q_PROPERTY(int NumberBox READ NumberBox WRITE setNumberBox NOTIFY PropertyChanged)
    Q_PROPERTY(bool Signo READ Signo WRITE setSigno NOTIFY PropertyChanged)
    Q_PROPERTY(bool SelOnFocus READ SelOnFocus WRITE setSelOnFocus NOTIFY PropertyChanged)
    Q_PROPERTY(bool Locked READ Locked WRITE setLocked NOTIFY PropertyChanged)
    Q_PROPERTY(bool Header READ Header WRITE setHeader NOTIFY PropertyChanged)
    Q_PROPERTY(QString HeaderCaption READ HeaderCaption WRITE setHeaderCaption NOTIFY PropertyChanged)

public:
    explicit textextend(QWidget* padre = nullptr);

    QFont Font() const;
    void setFont_(const QFont& font);
    QString Text() const;
    void setText(const QString& text);
    int NumberBox() const;
    void setNumberBox(int mode);
    bool Signo() const;
    void setSigno(bool allowed);
    bool SelOnFocus() const;
    void setSelOnFocus(bool select);
    bool Locked() const;
    void setLocked(bool locked);
    bool Header() const;
    void setHeader(bool visible);
    QString HeaderCaption() const;
    void setHeaderCaption(const QString& caption);

    double value() const;  // leading number of the text
    QLineEdit* entry() const;

signals:
    void PropertyChanged(const QString& name);
    void Change();
    void LostFocus();
};
