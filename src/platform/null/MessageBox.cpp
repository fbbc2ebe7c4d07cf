#include "platform/MessageBox.h"

#include "platform/null/NullMedia.h"

namespace platform {

bool MessageBox(const char* text, const char* caption, BoxButtons buttons, BoxIcon icon) {
    null::NullMedia& media = null::Media();
    media.boxes.push_back({text, caption, buttons, icon});
    if (media.boxAnswers.empty()) {
        return buttons == BoxButtons::Ok;
    }
    const bool answer = media.boxAnswers.front();
    media.boxAnswers.pop_front();
    return answer;
}

}  // namespace platform
