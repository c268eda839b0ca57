#include "shell/sysinfo.h"

#include <array>
#include <charconv>

#ifdef _WIN32
#include <windows.h>
#endif

namespace sysinfo {

namespace {

/// Closes the key whatever happens.
class ClaveAbierta {
public:
    ClaveAbierta(Registro& registro, Raiz raiz, const std::string& nombre)
        : registro_(registro), clave_(registro.abrir(raiz, nombre)) {}
    ~ClaveAbierta() {
        if (clave_)
            registro_.cerrar(*clave_);
    }
    ClaveAbierta(const ClaveAbierta&) = delete;
    ClaveAbierta& operator=(const ClaveAbierta&) = delete;

    std::optional<Valor> valor(const std::string& nombre) const {
        return clave_ ? registro_.consultar(*clave_, nombre) : std::nullopt;
    }

private:
    Registro& registro_;
    std::optional<Registro::Clave> clave_;
};

std::string hexadecimal(std::uint32_t numero) {
    std::array<char, 8> digits{};
    const auto end = std::to_chars(digits.data(), digits.data() + digits.size(), numero, 16).ptr;
    std::string text(digits.data(), end);
    for (char& c : text)
        c = c >= 'a' ? static_cast<char>(c - ('a' - 'A')) : c;
    return "&h" + text;
}

bool has_part(std::string_view escritorio, std::string_view part) {  // parts are parted by ":"
    const std::string list = ":" + std::string(escritorio) + ":";
    return list.find(":" + std::string(part) + ":") != std::string::npos;
}

}  // namespace

bool GetKeyValue(Registro& registro, Raiz raiz, const std::string& clave, const std::string& nombre,
                 std::string& valor) {
    valor.clear();
    const std::optional<Valor> leido = ClaveAbierta(registro, raiz, clave).valor(nombre);
    if (!leido || leido->tipo == Valor::Tipo::Otro)
        return false;
    valor = leido->tipo == Valor::Tipo::Texto ? leido->texto.substr(0, leido->texto.find('\0'))
                                              : hexadecimal(leido->numero);
    return true;
}

std::string programa_del_registro(Registro& registro, const std::function<bool(const std::string&)>& existe) {
    std::string valor;
    if (GetKeyValue(registro, Raiz::MaquinaLocal, "SOFTWARE\\Microsoft\\Shared Tools\\MSINFO", "PATH", valor))
        return valor;
    if (!GetKeyValue(registro, Raiz::MaquinaLocal, "SOFTWARE\\Microsoft\\Shared Tools Location", "MSINFO", valor))
        return {};
    valor += "\\MSINFO32.EXE";
    return existe(valor) ? valor : std::string();
}

std::vector<Programa> programas(std::string_view escritorio) {
    struct Fila {
        const char* escritorio;  // that alone can show it; "" for any
        Programa programa;
    };
    static const std::vector<Fila> filas{
        {"KDE", {"kinfocenter", {}}},
        {"GNOME", {"gnome-control-center", {"info-overview"}}},
        {"Unity", {"gnome-control-center", {"info-overview"}}},
        {"X-Cinnamon", {"cinnamon-settings", {"info"}}},
        {"MATE", {"mate-system-monitor", {"--show-system-tab"}}},
        {"", {"hardinfo2", {}}},
        {"", {"hardinfo", {}}},
        {"", {"kinfocenter", {}}},
        {"", {"xfce4-about", {}}},
    };
    std::vector<Programa> result;
    for (const Fila& fila : filas) {
        if (*fila.escritorio == '\0' || has_part(escritorio, fila.escritorio))
            result.push_back(fila.programa);
    }
    return result;
}

#ifdef _WIN32

namespace {

std::wstring wide(const std::string& text) {
    const int length = MultiByteToWideChar(CP_UTF8, 0, text.data(), static_cast<int>(text.size()), nullptr, 0);
    std::wstring result(static_cast<std::size_t>(length), L'\0');
    MultiByteToWideChar(CP_UTF8, 0, text.data(), static_cast<int>(text.size()), result.data(), length);
    return result;
}

std::string narrow(const std::wstring& text) {
    const int size = static_cast<int>(text.size());
    const int length = WideCharToMultiByte(CP_UTF8, 0, text.data(), size, nullptr, 0, nullptr, nullptr);
    std::string result(static_cast<std::size_t>(length), '\0');
    WideCharToMultiByte(CP_UTF8, 0, text.data(), size, result.data(), length, nullptr, nullptr);
    return result;
}

class RegistroWindows final : public Registro {
public:
    std::optional<Clave> abrir(Raiz, const std::string& nombre) override {
        HKEY key = nullptr;
        if (RegOpenKeyExW(HKEY_LOCAL_MACHINE, wide(nombre).c_str(), 0, KEY_READ, &key) != ERROR_SUCCESS)
            return std::nullopt;
        return reinterpret_cast<Clave>(key);
    }

    std::optional<Valor> consultar(Clave clave, const std::string& nombre) override {
        std::wstring buffer(32767, L'\0');
        auto bytes = static_cast<DWORD>(buffer.size() * sizeof(wchar_t));
        DWORD type = REG_NONE;
        auto* data = reinterpret_cast<BYTE*>(buffer.data());
        if (RegQueryValueExW(handle(clave), wide(nombre).c_str(), nullptr, &type, data, &bytes) != ERROR_SUCCESS)
            return std::nullopt;
        Valor valor;
        if (type == REG_SZ || type == REG_EXPAND_SZ) {
            buffer.resize(bytes / sizeof(wchar_t));
            valor.tipo = Valor::Tipo::Texto;
            valor.texto = narrow(type == REG_EXPAND_SZ ? expanded(buffer) : buffer);
        } else if (type == REG_DWORD) {
            valor.tipo = Valor::Tipo::Numero;
            valor.numero = data[0] | static_cast<std::uint32_t>(data[1]) << 8U |
                           static_cast<std::uint32_t>(data[2]) << 16U | static_cast<std::uint32_t>(data[3]) << 24U;
        }
        return valor;
    }

    void cerrar(Clave clave) override { RegCloseKey(handle(clave)); }

private:
    static HKEY handle(Clave clave) { return reinterpret_cast<HKEY>(clave); }

    static std::wstring expanded(const std::wstring& text) {  // "%CommonProgramFiles%\..."
        std::wstring result(32767, L'\0');
        const DWORD length = ExpandEnvironmentStringsW(text.c_str(), result.data(), static_cast<DWORD>(result.size()));
        result.resize(length > 0 && length <= result.size() ? length - 1 : 0);
        return result;
    }
};

}  // namespace

std::unique_ptr<Registro> registro_del_sistema() {
    return std::make_unique<RegistroWindows>();
}

#else

std::unique_ptr<Registro> registro_del_sistema() {
    return nullptr;
}

#endif

}  // namespace sysinfo
