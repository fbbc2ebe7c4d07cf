#pragma once

namespace platform {

enum class BoxIcon {
    Question,
    Exclamation,
    Stop,
    Information
};
enum class BoxButtons {
    Ok,
    YesNo
};

// Shows a box and waits for its answer: true for Yes or OK. Without a display that can show one
// the text goes to stderr and the answer is No.
bool MessageBox(const char* text, const char* caption, BoxButtons buttons, BoxIcon icon);

}  // namespace platform
