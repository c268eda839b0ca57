#pragma once
// Lines of text as pages of fixed-pitch type: aligned columns, pieces that fit the width, page by page. Texts are
// UTF-8.

#include <cstddef>
#include <functional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace imprimir {

/// Stands at the end of a piece whose line goes on in the next one.
inline constexpr std::string_view SIGUE = ".../...";
inline constexpr int TAB_COLUMNS = 8;

/// Printed width of a text; longer texts are not narrower.
using Medida = std::function<double(std::string_view text)>;

/// Columns that a text fills in fixed-pitch type: combining marks none, East Asian and pictographic characters two
/// (after Unicode Standard Annex 11).
int columnas(std::string_view texto);

/// One line cut into pieces at blanks, each at most `ancho` wide together with its ".../...". A word that is wider is
/// cut between two characters; base and combining marks stay together. A piece holds at least one character, however
/// narrow the page is; ".../..." is left out where there is no room for it. Blanks at a cut leave one behind, tabs lead
/// to the next multiple of 8 columns, other control characters count as blanks. An empty line is one empty piece.
std::vector<std::string> cortar(std::string_view linea, double ancho, const Medida& medida);

/// All lines, cut; a line break inside a line begins a line.
std::vector<std::string> cortar(std::span<const std::string> lineas, double ancho, const Medida& medida);

/// Number of pages of so many lines each (at least one line): at least one page, though it be empty.
std::size_t paginas(std::size_t lineas, std::size_t por_pagina);

/// The lines of a page, counted from 0; empty beyond the last.
std::span<const std::string> pagina(std::span<const std::string> lineas, std::size_t por_pagina, std::size_t numero);

/// Caption, a blank, and the number of a page (from 1 on): "Página: 1".
std::string pie(std::string_view rotulo, std::size_t numero);

/// Rows of cells as lines whose columns stand under one another, two blanks apart. The first row is the header,
/// followed by a line of "-". Columns that hold only numbers, "-----" and empty cells below the header are set flush
/// right.
std::vector<std::string> alinear(std::span<const std::vector<std::string>> filas);

}  // namespace imprimir
