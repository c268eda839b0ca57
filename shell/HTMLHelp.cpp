#include "shell/HTMLHelp.h"

#include <QApplication>
#include <QDir>
#include <QFileInfo>
#include <QKeyEvent>
#include <QWindow>

#include <system_error>
#include <utility>

#include "core/errors.h"
#include "shell/frmayuda.h"
#include "shell/frmprincipal.h"
#include "shell/textos.h"

namespace {

/// Name of the window that a key press is meant for: the nearest one with a page of its own around it, inside the main
/// window the child in front.
QString window_of(const QWidget* widget) {
    for (; widget; widget = widget->parentWidget()) {
        if (const auto* principal = qobject_cast<const frmprincipal*>(widget))
            return principal->ventana_activa();
        if (widget->isWindow() && widget->objectName().startsWith(QLatin1String("frm")))
            return widget->objectName();
    }
    return {};
}

/// In front of all, and usable even while a dialog holds the other windows back.
void bring_forward(QWidget& viewer) {
    viewer.winId();  // makes the window that the next lines speak of
    const QWidget* modal = QApplication::activeModalWidget();
    QWindow* in_front_of = modal ? modal->window()->windowHandle() : nullptr;
    if (viewer.windowHandle()->transientParent() != in_front_of) {
        viewer.hide();  // whether it is held back is decided when it is shown
        viewer.windowHandle()->setTransientParent(in_front_of);
    }
    viewer.setWindowState(viewer.windowState() & ~Qt::WindowMinimized);
    viewer.show();
    viewer.raise();
    viewer.activateWindow();
}

}  // namespace

QString HTMLHelp::visor_del_sistema() {
#ifdef _WIN32
    return QStringLiteral("hh.exe");
#else
    return {};
#endif
}

HTMLHelp::HTMLHelp(ApplicationState& estado, Mensajes& mensajes, Impresora& impresora, Exterior& exterior,
                   QString visor)
    : estado_(estado), mensajes_(mensajes), impresora_(impresora), exterior_(exterior), programa_(std::move(visor)) {
    QCoreApplication::instance()->installEventFilter(this);
}

HTMLHelp::~HTMLHelp() = default;

bool HTMLHelp::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() != QEvent::KeyPress || !watched->isWidgetType())
        return false;
    const auto* key = static_cast<QKeyEvent*>(event);
    if (key->key() != Qt::Key_F1 || key->modifiers() != Qt::NoModifier)
        return false;
    mostrar(window_of(static_cast<QWidget*>(watched)));
    return true;
}

void HTMLHelp::mostrar(const QString& ventana) {
    const std::filesystem::path path = estado_.help_path().toStdString();
    if (!leer(path))
        return;
    const auto own =
        ventana.isEmpty() ? std::nullopt : libro_->find(QStringLiteral("/%1.html").arg(ventana).toStdString());
    const QString page = QString::fromStdString(own.value_or(libro_->default_page()));
    if (!en_el_sistema(page))
        en_el_propio(page);
}

/// Reads the file unless it is the one that was read before; false when the user was told why not.
bool HTMLHelp::leer(const std::filesystem::path& path) {
    std::error_code missing;
    const Huella now{path, std::filesystem::last_write_time(path, missing), std::filesystem::file_size(path, missing)};
    if (path.empty() || missing) {
        mensajes_.mostrar(estado_.texto(36), 64, {});
        return false;
    }
    if (libro_ && now == huella_)
        return true;
    const QString name = QFileInfo(estado_.help_path()).fileName();
    try {
        auto libro = std::make_shared<const tavo::chm::ChmFile>(tavo::chm::ChmFile::open(path));
        if (libro->pages().empty())
            throw tavo::chm::DamagedHelp("there is no page in it");
        libro_ = std::move(libro);
    } catch (const tavo::FileNotFound&) {
        mensajes_.mostrar(estado_.texto(36), 64, {});
        return false;
    } catch (const tavo::chm::DamagedHelp& error) {
        const QString sentence = con_valor(
            estado_.texto(769, QStringLiteral("El archivo de ayuda %1 está dañado y no se puede leer.")), name);
        mensajes_.mostrar(sentence + QStringLiteral("\n\n") + QString::fromUtf8(error.what()), 0, {});
        return false;
    }
    huella_ = now;
    if (visor_)
        visor_->set_libro(libro_, name);
    return true;
}

bool HTMLHelp::en_el_sistema(const QString& page) {
    if (programa_.isEmpty())
        return false;
    const QString program = exterior_.buscar_programa(programa_);
    const QString file = QDir::toNativeSeparators(estado_.help_path());
    return !program.isEmpty() && exterior_.ejecutar(program, {file + QStringLiteral("::") + page});
}

void HTMLHelp::en_el_propio(const QString& page) {
    if (!visor_) {
        visor_ = std::make_unique<frmayuda>(estado_, impresora_, exterior_);
        visor_->set_libro(libro_, QFileInfo(estado_.help_path()).fileName());
    }
    visor_->abrir(page);
    bring_forward(*visor_);
}
