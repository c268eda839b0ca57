#include "controls/elegir_archivo.h"

#include <QFileDialog>
#include <QFileInfo>
#include <QRegularExpression>

QString ElegirArchivoQt::guardar(QWidget* padre, const QString& titulo, const QString& propuesta,
                                 const QString& filtros) {
    QFileDialog dialog(padre, titulo, QString(), filtros);
    dialog.setAcceptMode(QFileDialog::AcceptSave);
    dialog.selectFile(propuesta);
    const auto ending = [&dialog] {
        static const QRegularExpression pattern(QStringLiteral("\\*\\.(\\w+)"));
        return pattern.match(dialog.selectedNameFilter()).captured(1);
    };
    // The dialog itself adds the ending, so that it can ask before it overwrites.
    dialog.setDefaultSuffix(ending());
    QObject::connect(&dialog, &QFileDialog::filterSelected, &dialog, [&] { dialog.setDefaultSuffix(ending()); });
    return dialog.exec() == QDialog::Accepted ? dialog.selectedFiles().value(0) : QString();
}
