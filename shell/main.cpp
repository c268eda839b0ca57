// tavo-gas: makes the state and the windows, and starts.

#include <QFile>
#include <QStyleFactory>

#include <clocale>
#include <cstdio>
#include <exception>
#include <filesystem>
#include <optional>

#include "controls/elegir_archivo.h"
#include "controls/exterior_qt.h"
#include "controls/iconos.h"
#include "controls/impresora_qt.h"
#include "core/program_folder.h"
#include "shell/HTMLHelp.h"
#include "shell/aplicacion.h"
#include "shell/application_state.h"
#include "shell/command_line.h"
#include "shell/inicio.h"
#include "shell/mensajes_qt.h"
#include "shell/paletas.h"
#include "tavo_version.h"
#include "windows/plots/picture_file.h"
#include "windows/ventanas.h"

namespace {

void print(std::FILE* stream, const QString& text) {
    std::fputs(text.toLocal8Bit().constData(), stream);
}

QStringList words(int argc, char** argv) {
    QStringList result;
    for (int i = 0; i < argc; ++i)
        result.append(QString::fromLocal8Bit(argv[i]));
    return result;
}

/// The help and the version need no display.
int print_answer(int argc, char** argv) {
    const QCoreApplication application(argc, argv);
    const CommandLine::Answer answer = *parse_command_line(words(argc, argv)).answer;
    print(answer.status == 0 ? stdout : stderr, answer.text);
    return answer.status;
}

void set_palette(Paleta paleta) {
    if (paleta == Paleta::Desktop)
        return;
    QApplication::setStyle(QStyleFactory::create(QStringLiteral("Fusion")));
    QApplication::setPalette(paleta == Paleta::Dark ? paleta_oscura() : paleta_clara());
}

void print_error(const std::exception& error) {
    print(stderr, QStringLiteral("tavo-gas: %1\n").arg(QString::fromUtf8(error.what())));
}

/// What ends the program: on standard error for whoever started it, in a box for whoever sits before it.
void report_fatal(const std::exception& error, const ApplicationState& estado, Mensajes& mensajes) {
    print_error(error);
    mensajes.mostrar(mensaje_de_error(error, estado), 16, {});
}

/// Draws the plot that the words ask for; what is wrong with them goes to standard error.
int draw_plot(const std::filesystem::path& folder, const CommandLine::Plot& order) {
    const auto text = [](const std::optional<QString>& word) {
        return word ? std::optional(word->toStdString()) : std::nullopt;
    };
    graficos::PlotArguments arguments{order.file.toStdString(), {}, text(order.range), text(order.size)};
    for (const QString& row : order.rows)
        arguments.rows.push_back(row.toStdString());
    try {
        ApplicationState estado(folder);
        tavo::confreg::recover({estado.language_path(), estado.data_path()}, estado.site());
        estado.load_languages();
        graficos::draw(arguments, estado);
        return 0;
    } catch (const std::exception& error) {
        print_error(error);
        return 1;
    }
}

/// Empty, and the user knows why, where there is none.
std::optional<std::filesystem::path> find_program_folder(const char* argv0, const CommandLine& order,
                                                         Mensajes& mensajes) {
    std::optional<std::filesystem::path> home;
    if (order.home)
        home = QFile::encodeName(*order.home).toStdString();
    try {
        return tavo::program_folder(tavo::places(argv0, home));
    } catch (const std::exception& error) {
        if (order.plot)  // nobody sits before it
            print_error(error);
        else
            report_fatal(error, ApplicationState({}), mensajes);
        return std::nullopt;
    }
}

int run(Aplicacion& application, const std::filesystem::path& folder, const CommandLine& order, Mensajes& mensajes) {
    ApplicationState estado(folder);
    application.al_fallar = [&](const std::exception& error) {
        mensajes.mostrar(mensaje_de_error(error, estado), 16, {});
    };
    ElegirArchivoQt archivos;
    ImpresoraQt impresora(mensajes, archivos,
                          [&estado](int number, const QString& literal) { return estado.texto(number, literal); });
    ExteriorQt exterior;
    register_windows(estado, {mensajes, archivos, impresora, exterior});
    HTMLHelp ayuda(estado, mensajes, impresora, exterior);
    Inicio inicio(estado, mensajes, [&ayuda](const QString& ventana) { ayuda.mostrar(ventana); });
    QObject::connect(&inicio, &Inicio::fallido, &application, [&](const std::exception_ptr& error) {
        try {
            std::rethrow_exception(error);
        } catch (const std::exception& known) {
            report_fatal(known, estado, mensajes);
        }
        QCoreApplication::exit(1);
    });
    try {
        inicio.empezar(order.splash);
    } catch (const std::exception& error) {
        report_fatal(error, estado, mensajes);
        return 1;
    }
    return Aplicacion::exec();
}

}  // namespace

int main(int argc, char** argv) {
    const CommandLine order = parse_command_line(words(argc, argv));
    if (order.answer)
        return print_answer(argc, argv);
    if (order.plot)
        qputenv("QT_QPA_PLATFORM", "offscreen");  // needs no display
    Aplicacion application(argc, argv);
    std::setlocale(LC_NUMERIC, "C");
    QApplication::setApplicationName(QStringLiteral("tavo-gas"));
    QApplication::setApplicationVersion(QStringLiteral(TAVO_VERSION));
    QApplication::setDesktopFileName(QStringLiteral("tavo-gas"));
    QApplication::setWindowIcon(icono_del_programa());
    set_palette(order.paleta);
    MensajesQt mensajes;
    const auto folder = find_program_folder(argv[0], order, mensajes);
    if (folder && order.plot)
        return draw_plot(*folder, *order.plot);
    return folder ? run(application, *folder, order, mensajes) : 1;
}
