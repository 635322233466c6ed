#pragma once

#include <functional>

class Ui;

// Runs a form's handler for something a person did. A handler that throws
// does not take the program down: the pointer is restored, the error text
// is shown with the critical icon through `ui`, and the window stays usable.
void RunGuarded(Ui &ui, const std::function<void()> &handler);
