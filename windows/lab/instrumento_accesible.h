#pragma once
// What a screen reader knows of an instrument.

/// From now on an Instrumento speaks its variable and its value with the unit, and takes values. Asking again changes
/// nothing.
void install_instrument_accessibility();
