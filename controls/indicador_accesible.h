#pragma once
// What a screen reader knows of an indicator.

/// From now on an Indicador speaks its variable and its value with the unit, and takes values. Asking again changes
/// nothing.
void install_indicator_accessibility();
