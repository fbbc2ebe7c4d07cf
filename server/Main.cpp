#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <cstring>

#include "HiscoreService.h"

namespace {

HiscoreService* running = nullptr;

void StopRunning(int /*signal*/) {
    running->Stop();
}

int Usage() {
    std::fprintf(stderr, "usage: hiscore-server --port N --database FILE\n");
    return 2;
}

}  // namespace

int main(int argc, char** argv) {
    long port = -1;
    const char* file = nullptr;
    for (int i = 1; i + 1 < argc; i += 2) {
        if (std::strcmp(argv[i], "--port") == 0) {
            port = std::strtol(argv[i + 1], nullptr, 10);
        } else if (std::strcmp(argv[i], "--database") == 0) {
            file = argv[i + 1];
        } else {
            return Usage();
        }
    }
    if (argc % 2 == 0 || port < 0 || port > 65535 || file == nullptr) {
        return Usage();
    }
    HiscoreStore store;
    if (store.Open(file)) {
        std::fprintf(stderr, "hiscore-server: %s: %s\n", file, store.Error().c_str());
        return 1;
    }
    HiscoreService service(store);
    if (service.Listen(static_cast<uint16_t>(port))) {
        std::perror("hiscore-server: cannot listen");
        return 1;
    }
    running = &service;
    std::signal(SIGINT, StopRunning);
    std::signal(SIGTERM, StopRunning);
    std::printf("Serving the hiscores of %s on port %d\n", file, service.Port());
    std::fflush(stdout);
    service.Run();
    return 0;
}
