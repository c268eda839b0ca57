#pragma once
// One edit or question, put to the program's settings text and to the model of it.

#include <string>

#include "core/confreg.h"
#include "core/encoding.h"
#include "core/errors.h"
#include "tests/support/confreg_model.h"

namespace tavo::model {

/// Kind of the error that an operation ends with; "" for none.
template <class Operation>
std::string outcome(const Operation& operation) {
    try {
        operation();
        return "";
    } catch (const InvalidArgument&) {
        return "argument";
    } catch (const Overflow&) {
        return "overflow";
    } catch (const RewriteRefused&) {
        return "refused";
    } catch (const FileNotFound&) {
        return "missing";
    }
}

enum Operation { ASEGURAR, BORRAR, REEMPLAZAR, LEER, LINEA, ESCRIBIR };

/// asegurarseccion, borrarseccion and lineaseccion take a, leerclave a and b, reemplazarlinea b and c; escribirclave,
/// which any other number is as well, takes all.
struct Edit {
    int operation;
    std::string a{}, b{}, c{};  // in the encoding of the file
};

/// What came out of it: the kind of the error and the result.
inline std::string perform(confreg::Text& text, const Edit& e) {
    const auto utf8 = [&text](const std::string& s) { return text.is_utf8() ? s : utf8_from_windows1252(s); };
    const std::string a = utf8(e.a), b = utf8(e.b), c = utf8(e.c);
    std::string result;
    const std::string error = outcome([&] {
        if (e.operation == ASEGURAR)
            text.asegurarseccion(a);
        else if (e.operation == BORRAR)
            result = std::to_string(text.borrarseccion(a));
        else if (e.operation == REEMPLAZAR)
            result = std::to_string(text.reemplazarlinea(b, c));
        else if (e.operation == LEER)
            result = text.leerclave(a, b);
        else if (e.operation == LINEA)
            result = std::to_string(text.lineaseccion(a));
        else
            text.escribirclave(a, b, c);
    });
    return error + "/" + result;
}

/// The same by the model, on the bytes of a file in Windows-1252.
inline std::string perform(std::string& bytes, const Edit& e) {
    std::string result;
    const std::string error = outcome([&] {
        if (e.operation == ASEGURAR)
            asegurarseccion(bytes, e.a);
        else if (e.operation == BORRAR)
            result = std::to_string(borrarseccion(bytes, e.a));
        else if (e.operation == REEMPLAZAR)
            result = std::to_string(reemplazarlinea(bytes, e.b, e.c));
        else if (e.operation == LEER)
            result = utf8_from_windows1252(leerclave(bytes, e.a, e.b));
        else if (e.operation == LINEA)
            result = std::to_string(lineaseccion(bytes, e.a));
        else
            escribirclave(bytes, e.a, e.b, e.c);
    });
    return error + "/" + result;
}

}  // namespace tavo::model
