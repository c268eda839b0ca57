#pragma once
// A help page on paper.

#include "controls/impresora.h"
#include "controls/texto.h"

class PaginaAyuda;

/// The page shown, which outlives the document: its text over as many sheets as it needs, each with its title and the
/// footer "Página: " and its number.
Documento documento_de_pagina(PaginaAyuda& pagina, const QString& titulo, const Texto& texto);
