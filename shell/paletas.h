#pragma once
// Fixed light and dark colours, for people who do not want those of the desktop.

#include <QPalette>

QPalette paleta_clara();
QPalette paleta_oscura();
