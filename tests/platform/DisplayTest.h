#pragma once

// Tests on a real display: a window with a context, and what arrives in the message queue. Keys are
// pressed with xdotool, as a player's would be.

#include <gtest/gtest.h>

#include <cstdio>
#include <cstdlib>
#include <string>
#include <vector>

#include "platform/Clock.h"
#include "platform/Messages.h"
#include "platform/Window.h"

class DisplayTest : public testing::Test {
protected:
    void SetUp() override { ASSERT_FALSE(platform::OpenDisplay()) << "needs a display"; }
    void TearDown() override {
        DestroyAll();
        platform::SetIdlePump(nullptr);
        platform::SetWindowProcedure(nullptr);
        platform::CloseDisplay();
    }

    // Creates the window with a current context and shows it.
    void Create(int width, int height, bool fullscreen = false) {
        platform::WindowOptions options;
        options.title = "Display test";
        options.width = width;
        options.height = height;
        options.fullscreen = fullscreen;
        window = platform::CreateGameWindow(options);
        ASSERT_NE(window, nullptr);
        surface = platform::GetSurface(window);
        context = platform::CreateContext(window);
        ASSERT_NE(context, nullptr);
        ASSERT_FALSE(platform::MakeCurrent(surface, context));
        platform::ShowGameWindow(window);
    }

    void DestroyAll() {
        if (window != nullptr) {
            platform::RestoreDisplayMode();
            EXPECT_FALSE(platform::MakeCurrent(nullptr, nullptr));
            EXPECT_FALSE(platform::DeleteContext(context));
            EXPECT_FALSE(platform::ReleaseSurface(window, surface));
            EXPECT_FALSE(platform::DestroyGameWindow(window));
            window = nullptr;
        }
    }

    // Everything that arrives within so many milliseconds, paint messages left out.
    static std::vector<platform::Message> Collect(int milliseconds) {
        std::vector<platform::Message> messages;
        const int32_t end = platform::Milliseconds() + milliseconds;
        do {
            platform::Pause(5);
            platform::Message message;
            while (platform::PeekMessage(message)) {
                messages.push_back(message);
            }
        } while (platform::Milliseconds() < end);
        return messages;
    }

    static int Count(const std::vector<platform::Message>& messages, platform::MessageKind kind,
                     int code = 0) {
        int count = 0;
        for (const platform::Message& message : messages) {
            count += message.kind == kind && message.code == code ? 1 : 0;
        }
        return count;
    }

    static void Run(const std::string& command) {
        ASSERT_EQ(std::system(command.c_str()), 0) << command;
    }

    platform::WindowHandle window = nullptr;
    platform::SurfaceHandle surface = nullptr;
    platform::ContextHandle context = nullptr;
};
