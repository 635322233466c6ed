// Lets GoogleTest print QString values in failure messages. Each test file
// declares this function so that the printer finds it.
#include <QString>

#include <ostream>

void PrintTo(const QString &text, std::ostream *os)
{
    *os << '"' << text.toStdString() << '"';
}
