// help_pictures DATA LANGUAGE HELP FOLDER: draws the pictures of the help in a language, without a display.
// DATA holds gas database and language table; HELP is the compiled help as it is without them, for its own viewer.
// Pictures of FOLDER that are not drawn any more go; files that would be the same stay as they are, and so does "list",
// which names the pictures and what is in them.

#include <QApplication>
#include <QCryptographicHash>
#include <QDir>
#include <QFile>
#include <QFontDatabase>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QPainter>
#include <QStyleFactory>
#include <QSvgRenderer>
#include <QTemporaryDir>

#include <clocale>
#include <cstdio>
#include <exception>
#include <stdexcept>

#include "controls/elegir_archivo.h"
#include "controls/exterior.h"
#include "controls/impresora.h"
#include "core/confreg.h"
#include "core/models.h"
#include "shell/HTMLHelp.h"
#include "shell/application_state.h"
#include "shell/frmayuda.h"
#include "shell/inicio.h"
#include "shell/paletas.h"
#include "tools/pictures/escenas.h"
#include "tools/pictures/picture_png.h"
#include "windows/ventanas.h"

namespace {

namespace fs = std::filesystem;

[[noreturn]] void fail(const QString& sentence) {
    throw std::runtime_error(sentence.toStdString());
}

void write(const QString& path, const QByteArray& bytes) {
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly) || file.write(bytes) != bytes.size())
        fail(path + " cannot be written");
}

/// A box would stand in the way: there is nobody to answer it.
class SinMensajes final : public Mensajes {
public:
    Respuesta mostrar(const QString& texto, int, const QString&) override {
        fail(QStringLiteral("a window wants to say: ") + texto);
    }
};

class SinArchivos final : public ElegirArchivo {
    QString guardar(QWidget*, const QString&, const QString&, const QString&) override { return {}; }
};

class SinImpresora final : public Impresora {
    void imprimir(QWidget*, const Documento&) override {}
};

class SinExterior final : public Exterior {
    bool abrir_direccion(const QString&) override { return false; }
    QString buscar_programa(const QString&) override { return {}; }
    bool ejecutar(const QString&, const QStringList&) override { return false; }
};

/// The pictures of one language.
class Carpeta {
public:
    explicit Carpeta(const QString& path) : folder_(path) {
        if (!folder_.mkpath(QStringLiteral(".")))
            fail(path + " cannot be made");
    }

    void save(const QString& name, const QImage& picture) {
        const QByteArray bytes = png_of(picture);
        const QString file = name + ".png";
        write_if_new(file, bytes);
        names_.append(file);
        list_ += file.toUtf8() + ' ' + QCryptographicHash::hash(bytes, QCryptographicHash::Sha1).toHex() + '\n';
    }

    void finish() {
        for (const QString& name : folder_.entryList({QStringLiteral("*.png")}, QDir::Files))
            if (!names_.contains(name))
                folder_.remove(name);
        write_if_new(QStringLiteral("list"), list_);
    }

private:
    void write_if_new(const QString& name, const QByteArray& bytes) {
        QFile old(folder_.filePath(name));
        if (!old.open(QIODevice::ReadOnly) || old.readAll() != bytes)
            write(folder_.filePath(name), bytes);
    }

    QDir folder_;
    QStringList names_;
    QByteArray list_;
};

/// Name of the platform that draws to memory, on a screen with room for every window; it reads the folder.
QByteArray screen_without_display(const QTemporaryDir& folder) {
    const QString file = folder.filePath(QStringLiteral("screen.json"));
    const QJsonObject screen{{"name", "pictures"},
                             {"x", 0},
                             {"y", 0},
                             {"width", 1600},
                             {"height", 1200},
                             {"logicalDpi", 96},
                             {"logicalBaseDpi", 96},
                             {"dpr", PIXEL_RATIO}};
    write(file, QJsonDocument(QJsonObject{{"screens", QJsonArray{screen}}}).toJson());
    return "offscreen:configfile=" + QFile::encodeName(file);
}

/// Every machine draws the same.
void set_look() {
    QApplication::setStyle(QStyleFactory::create(QStringLiteral("Fusion")));
    QApplication::setPalette(paleta_clara());
    const QStringList families = QFontDatabase::families();
    for (const char* family : {"DejaVu Sans", "Liberation Sans"})
        if (families.contains(QLatin1String(family))) {
            QFont font(QLatin1String(family), 9);
            font.setStyleStrategy(QFont::NoSubpixelAntialias);
            QApplication::setFont(font);
            return;
        }
    fail(
        QStringLiteral("there is neither DejaVu Sans nor Liberation Sans to write with: install Debian's package "
                       "fonts-dejavu-core or fonts-liberation"));
}

/// A program folder in which the language is the active one.
void fill_home(const QTemporaryDir& home, const QString& data, const QString& language, const QString& help) {
    const auto copy = [&home](const QString& from, const QString& name) {
        const QString to = home.filePath(name);
        if (!QFile::copy(from, to))
            fail(from + " cannot be copied to " + to);
        QFile::setPermissions(to, QFile::ReadOwner | QFile::WriteOwner);
    };
    for (const char* name : {"data", "idioma.lng"})
        copy(QDir(data).filePath(QLatin1String(name)), QLatin1String(name));
    copy(help, language + ".chm");
    const fs::path folder = home.path().toStdString();
    tavo::confreg::escribirclave(folder / "idioma.lng", "idioma", "idioma", language.toStdString(), {folder});
}

void draw_windows(const QString& data, const QString& language, const QString& help, Carpeta& pictures) {
    const QTemporaryDir home;
    fill_home(home, data, language, help);
    ApplicationState estado(home.path().toStdString());
    SinMensajes mensajes;
    SinArchivos archivos;
    SinImpresora impresora;
    SinExterior exterior;
    register_windows(estado, {mensajes, archivos, impresora, exterior});
    HTMLHelp ayuda(estado, mensajes, impresora, exterior, {});
    Inicio inicio(estado, mensajes, [](const QString&) {});
    inicio.empezar(false);
    if (estado.language() != language)
        fail(QStringLiteral("idioma.lng has no language \"%1\"").arg(language));
    Escenas escenas(estado, *inicio.principal(),
                    [&](const QString& name, const QImage& picture) { pictures.save(name, picture); });
    escenas.retratar();
    ayuda.mostrar(QStringLiteral("maxwell"));
    escenas.retratar_ayuda(ayuda.visor());
}

/// The equations in black on white, in the size of the pages' text.
void draw_formulas(Carpeta& pictures) {
    constexpr double SCALE = 1.7, MARGIN = 4.0;
    for (int model = 0; model < static_cast<int>(tavo::models().size()); ++model) {
        QSvgRenderer formula(QStringLiteral(":/formulas/%1.svg").arg(model));
        if (!formula.isValid())
            fail(QStringLiteral("there is no formula of model %1").arg(model));
        const QSizeF size = formula.viewBoxF().size() * SCALE;
        QImage picture((size + QSizeF(2 * MARGIN, 2 * MARGIN)).toSize() * PIXEL_RATIO, QImage::Format_RGB32);
        picture.setDevicePixelRatio(PIXEL_RATIO);
        picture.fill(Qt::white);
        QPainter painter(&picture);
        painter.setRenderHint(QPainter::Antialiasing);
        formula.render(&painter, QRectF(QPointF(MARGIN, MARGIN), size));
        painter.end();
        pictures.save(QStringLiteral("formula%1").arg(model), picture);
    }
}

/// What Qt says of a platform without a display is no news.
void print_message(QtMsgType, const QMessageLogContext&, const QString& text) {
    if (!text.startsWith(QLatin1String("This plugin does not support")) &&
        !text.startsWith(QLatin1String("QStandardPaths")))
        std::fputs(qPrintable(text + u'\n'), stderr);
}

}  // namespace

int main(int argc, char** argv) {
    qInstallMessageHandler(print_message);
    qputenv("LC_ALL", "C.UTF-8");
    try {
        const QTemporaryDir folder;
        qputenv("QT_QPA_PLATFORM", screen_without_display(folder));
        QApplication application(argc, argv);
        std::setlocale(LC_NUMERIC, "C");
        const QStringList words = QCoreApplication::arguments();
        if (words.size() != 5)
            fail(QStringLiteral("help_pictures DATA LANGUAGE HELP FOLDER"));
        set_look();
        Carpeta pictures(words[4]);
        draw_formulas(pictures);
        draw_windows(words[1], words[2], words[3], pictures);
        pictures.finish();
        return 0;
    } catch (const std::exception& error) {
        std::fputs(("help_pictures: " + std::string(error.what()) + "\n").c_str(), stderr);
        return 1;
    }
}
