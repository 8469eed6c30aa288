// Holds a window until its input ends, and says when it has it. The first program with a window makes Wine's
// desktop, with or without a display as it has one itself; the desktop then lasts as long as there are
// windows. So this one comes before the tests, of which one runs without a display.
#include <windows.h>

#include <cstdio>

int main() {
    const HWND window = CreateWindowExA(0, "STATIC", "", 0, 0, 0, 8, 8, nullptr, nullptr, nullptr, nullptr);
    std::puts(window != nullptr ? "ready" : "no display");
    std::fflush(stdout);
    while (std::getchar() != EOF)
        continue;
    return window != nullptr ? 0 : 1;
}
