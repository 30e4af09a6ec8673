#pragma once
// The Delta ISA scroll bar shared by the speed and descent screens.

class QScrollBar;
class QVBoxLayout;

namespace norvane {

class CalculatorScreen;

// A row under `column`: the "Delta ISA (°C)" caption, the bar ("DISAScroll") and its signed value
// ("DISAData"), which follows the bar; moving the bar recalculates results on screen.
QScrollBar* AddDisaScroll(CalculatorScreen* screen, QVBoxLayout* column);

}  // namespace norvane
