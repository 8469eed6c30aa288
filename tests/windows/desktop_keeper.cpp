// Holds a window until its input ends, and says when it has it. Wine's desktop lasts as
// long as there are windows, so this one comes before the tests and stays to their end.
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
