#include "shell/inicio.h"

#include <QApplication>
#include <QLibraryInfo>
#include <QLocale>

#include <exception>
#include <utility>

#include "core/confreg.h"

Inicio::Inicio(ApplicationState& estado, Mensajes& mensajes, std::function<void(const QString& ventana)> ayuda)
    : estado_(estado), mensajes_(mensajes), ayuda_(std::move(ayuda)) {}

Inicio::~Inicio() = default;

void Inicio::empezar(bool splash) {
    tavo::confreg::recover({estado_.language_path(), estado_.data_path()}, estado_.site());
    QLocale::setDefault(QLocale::c());  // "." in every number, whatever the desktop has
    estado_.load_languages();
    const QLocale language(estado_.texto(549));
    if (language != QLocale::c() && botones_.load(language, QStringLiteral("qtbase"), QStringLiteral("_"),
                                                  QLibraryInfo::path(QLibraryInfo::TranslationsPath)))
        QApplication::installTranslator(&botones_);

    principal_ = std::make_unique<frmprincipal>(estado_, mensajes_, ayuda_);
    principal_->mostrar_idiomas();
    if (!splash) {
        mostrar_principal();
        return;
    }
    splash_ = std::make_unique<frmSplash>(estado_);
    connect(splash_.get(), &frmSplash::terminado, this, [this] {
        try {
            mostrar_principal();
        } catch (const std::exception&) {
            emit fallido(std::current_exception());
        }
    });
    splash_->show();
}

void Inicio::mostrar_principal() {
    principal_->MDIForm_Load();
    principal_->show();
}
