#pragma once
// Where the system's own program about the system is: on Windows the registry says it, elsewhere it is one of a few
// programs. Standard library only.

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace sysinfo {

enum class Raiz { MaquinaLocal };  // HKEY_LOCAL_MACHINE

/// A value as the registry keeps it, UTF-8.
struct Valor {
    enum class Tipo { Texto, Numero, Otro };
    Tipo tipo = Tipo::Otro;
    std::string texto;         // the terminating zero, and what stands behind it, included
    std::uint32_t numero = 0;  // of a number
};

class Registro {
public:
    using Clave = std::uintptr_t;

    virtual ~Registro() = default;
    /// Opens a key for reading; empty where there is none. An open key is to be closed.
    virtual std::optional<Clave> abrir(Raiz raiz, const std::string& nombre) = 0;
    virtual std::optional<Valor> consultar(Clave clave, const std::string& nombre) = 0;
    virtual void cerrar(Clave clave) = 0;
};

/// The registry of the system; nothing where the system has none.
std::unique_ptr<Registro> registro_del_sistema();

/// Reads one value: a text up to its terminating zero, a number in hexadecimal behind "&h". False, with an empty text,
/// where the value cannot be read or is of another kind.
bool GetKeyValue(Registro& registro, Raiz raiz, const std::string& clave, const std::string& nombre,
                 std::string& valor);

/// Full path of the program that the registry names; "" where it names none. Only the path of the second place, a
/// folder, has to exist: the first one is taken as it stands.
std::string programa_del_registro(Registro& registro, const std::function<bool(const std::string&)>& existe);

struct Programa {
    std::string nombre;
    std::vector<std::string> argumentos;
};

/// Programs that show the system on a desktop other than Windows, best first; `escritorio` is XDG_CURRENT_DESKTOP.
std::vector<Programa> programas(std::string_view escritorio);

}  // namespace sysinfo
