#pragma once

#include <QString>

// Draws the program's window icon and writes it as an .ico file.
bool WriteDemoIcon(const QString &path);
