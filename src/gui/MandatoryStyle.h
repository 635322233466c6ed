#pragma once

class QWidget;

// The host's mandatory style: a light yellow field with a soft border.
inline constexpr const char *kMandatoryColor = "#FFFFE1";

// Shows or takes away the host's mandatory mark on a widget; a widget
// already showing the wanted state is left alone.
void ShowMandatory(QWidget &widget, bool mandatory);
