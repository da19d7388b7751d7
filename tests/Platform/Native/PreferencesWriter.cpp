// Writes numbered values into a preferences file for ever, and says on its standard output which are stored: after
// each write, the number as eight bytes. PreferencesKillTest kills it.

#include <cstdint>
#include <cstdlib>
#include <iostream>

#include <unistd.h>

#include "Platform/Native/SQLitePreferences.h"

int main(int count, char** arguments) {
    if (count != 3) {
        return 2;
    }
    const bool synchronizes = std::atoi(arguments[2]) != 0;
    quorvane::platform::native::SQLitePreferences store(arguments[1], [](std::string_view line) {
        std::cerr << line << std::endl;
        _exit(3);
    });
    for (std::int64_t number = store.integer("number").value_or(0) + 1;; ++number) {
        // The values around the number are of any size, so that pages split, merge and move to the file.
        const auto size = static_cast<std::size_t>(number * 7919 % 3000);
        store.setString("text" + std::to_string(number % 40), std::to_string(number) + ":" + std::string(size, 'x'));
        if (number % 11 == 0) {
            store.remove("text" + std::to_string((number + 20) % 40));
        }
        store.setInteger("number", number);
        if (synchronizes && number % 50 == 0) {
            store.synchronize();
        }
        if (write(STDOUT_FILENO, &number, sizeof number) != sizeof number) {
            return 1;
        }
    }
}
