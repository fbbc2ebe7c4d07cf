#include "platform/Dialogs.h"

#include "platform/null/NullMedia.h"

namespace platform {

namespace {

// One press of OK for each of the inputs, until one is accepted.
template <typename Fields>
void RunInputs(std::deque<Fields>& inputs, const std::function<bool(const Fields&)>& accept) {
    while (!inputs.empty()) {
        const Fields fields = inputs.front();
        inputs.pop_front();
        if (accept(fields)) {
            return;
        }
    }
}

}  // namespace

void RunProxyDialog(const ProxyFields& initial,
                    const std::function<bool(const ProxyFields&)>& accept) {
    null::Media().proxyDialogs.push_back(initial);
    RunInputs(null::Media().proxyInputs, accept);
}

void RunServerDialog(const ServerFields& initial,
                     const std::function<bool(const ServerFields&)>& accept) {
    null::Media().serverDialogs.push_back(initial);
    RunInputs(null::Media().serverInputs, accept);
}

}  // namespace platform
