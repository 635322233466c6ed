#pragma once

#include <QString>

#include <functional>

// Where the name of this computer comes from; injectable for tests.
using ComputerNameSource = std::function<QString()>;

// The name of this computer: GetComputerNameW on Windows, the host name elsewhere.
QString ComputerName();
