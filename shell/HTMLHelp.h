#pragma once
// Opens the compiled help of the active language: with the platform's viewer where there is one, else with the
// program's own. F1 works in every window.

#include <QObject>

#include <filesystem>
#include <memory>

#include "controls/exterior.h"
#include "controls/impresora.h"
#include "shell/application_state.h"
#include "shell/mensajes.h"

class frmayuda;
namespace tavo::chm {
class ChmFile;
}

class HTMLHelp final : public QObject {
    Q_OBJECT
public:
    /// Program that shows compiled help on this platform; empty where there is none.
    static QString visor_del_sistema();

    HTMLHelp(ApplicationState& estado, Mensajes& mensajes, Impresora& impresora, Exterior& exterior,
             QString visor = visor_del_sistema());
    ~HTMLHelp() override;

    /// Opens the page named like the window ("frmdatos"), the file's first page where there is no such page or window.
    /// A missing file is told with text 36, a damaged one with a sentence.
    void mostrar(const QString& ventana = {});
    /// The program's own viewer; nullptr before its first use.
    frmayuda* visor() const { return visor_.get(); }

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    /// What tells a file from the one that was read.
    struct Huella {
        std::filesystem::path path;
        std::filesystem::file_time_type time;
        std::uintmax_t size = 0;
        bool operator==(const Huella&) const = default;
    };

    bool leer(const std::filesystem::path& path);
    bool en_el_sistema(const QString& page);
    void en_el_propio(const QString& page);

    ApplicationState& estado_;
    Mensajes& mensajes_;
    Impresora& impresora_;
    Exterior& exterior_;
    QString programa_;
    Huella huella_;
    std::shared_ptr<const tavo::chm::ChmFile> libro_;
    std::unique_ptr<frmayuda> visor_;
};
