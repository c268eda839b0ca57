// System information against a stand-in registry.

#include "shell/sysinfo.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <map>
#include <stdexcept>

using namespace std::string_literals;
using namespace sysinfo;

namespace {

const std::string MSINFO = "SOFTWARE\\Microsoft\\Shared Tools\\MSINFO";
const std::string LOCATION = "SOFTWARE\\Microsoft\\Shared Tools Location";

class RegistroPrueba final : public Registro {
public:
    std::map<std::string, std::map<std::string, Valor>> claves;
    std::vector<std::string> abiertas;  // every key that was opened
    int por_cerrar = 0;
    bool falla = false;

    std::optional<Clave> abrir(Raiz, const std::string& nombre) override {
        if (!claves.contains(nombre))
            return std::nullopt;
        abiertas.push_back(nombre);
        ++por_cerrar;
        return abiertas.size() - 1;
    }
    std::optional<Valor> consultar(Clave clave, const std::string& nombre) override {
        if (falla)
            throw std::runtime_error("no answer");
        const auto& valores = claves.at(abiertas.at(clave));
        const auto found = valores.find(nombre);
        return found == valores.end() ? std::nullopt : std::optional(found->second);
    }
    void cerrar(Clave clave) override { por_cerrar -= clave < abiertas.size() ? 1 : 1000; }
};

Valor texto(const std::string& text) {
    return {Valor::Tipo::Texto, text, 0};
}

}  // namespace

TEST(Sysinfo, ValuesOfARegistryKey) {
    struct Case {
        const char* clave;
        Valor valor;
        bool leido;
        std::string resultado;
    };
    const Case cases[]{
        {"K", texto("C:\\a b\0"s), true, "C:\\a b"},
        {"K", texto("corto\0resto\0"s), true, "corto"},
        {"K", texto("sin cero"), true, "sin cero"},
        {"K", texto(""), true, ""},
        {"K", {Valor::Tipo::Numero, "", 0}, true, "&h0"},
        {"K", {Valor::Tipo::Numero, "", 0xDEADBEEF}, true, "&hDEADBEEF"},
        {"K", {Valor::Tipo::Otro, "bytes", 7}, false, ""},
        {"otra", texto("x"), false, ""},
    };
    for (const Case& c : cases) {
        RegistroPrueba registro;
        registro.claves["K"]["v"] = c.valor;
        std::string resultado = "de antes";
        EXPECT_EQ(GetKeyValue(registro, Raiz::MaquinaLocal, c.clave, "v", resultado), c.leido) << c.resultado;
        EXPECT_EQ(resultado, c.resultado);
        EXPECT_FALSE(GetKeyValue(registro, Raiz::MaquinaLocal, c.clave, "falta", resultado));
        EXPECT_EQ(registro.por_cerrar, 0);
        registro.falla = true;
        EXPECT_THROW(GetKeyValue(registro, Raiz::MaquinaLocal, "K", "v", resultado), std::runtime_error);
        EXPECT_EQ(registro.por_cerrar, 0);
    }
}

TEST(Sysinfo, TheToolThatTheRegistryNames) {
    RegistroPrueba registro;
    std::string there = "D:\\Tools\\MSINFO32.EXE";
    const auto program = [&] {
        return programa_del_registro(registro, [&](const std::string& path) { return path == there; });
    };
    EXPECT_EQ(program(), "");
    registro.claves[LOCATION]["MSINFO"] = texto("D:\\Tools\0"s);
    EXPECT_EQ(program(), there);
    there.clear();
    EXPECT_EQ(program(), "");
    registro.claves[MSINFO]["PATH"] = texto("C:\\msinfo.exe\0"s);
    EXPECT_EQ(program(), "C:\\msinfo.exe");
    EXPECT_EQ(registro.por_cerrar, 0);
}

TEST(Sysinfo, ADesktopIsAskedForItsOwnProgramFirst) {
    const auto names = [](std::string_view desktop) {
        std::vector<std::string> result;
        for (const Programa& program : programas(desktop))
            result.push_back(program.nombre);
        return result;
    };
    EXPECT_EQ(names("ubuntu:GNOME").front(), "gnome-control-center");
    EXPECT_EQ(names("KDE").front(), "kinfocenter");
    EXPECT_EQ(std::ranges::count(names("GNOME-Flashback-ish"), "gnome-control-center"), 0);
    EXPECT_FALSE(names("").empty());
}
