#include "app/Application.h"
#include "platform/Window.h"

int main() {
    if (platform::OpenDisplay()) {
        return 1;
    }
    StartUp();
    const int exitCode = RunMessageLoop();
    platform::CloseDisplay();
    return exitCode;
}
