#pragma once

#include <QString>

// The library's string resources.
namespace modPrincipal {

// The product name that titles every message box (string resource 100).
QString LoadResString(int id);

} // namespace modPrincipal
