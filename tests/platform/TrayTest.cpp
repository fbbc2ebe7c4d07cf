// The tray icon on a real display, answered with real keys and clicks. Skipped where there is no
// display, no xdotool or no window manager to give a window the keyboard.

#include <SDL.h>
#include <gio/gio.h>
#include <gtest/gtest.h>
#include <signal.h>
#include <sys/wait.h>
#include <unistd.h>

#include <chrono>
#include <cstdlib>
#include <functional>
#include <memory>
#include <string>
#include <thread>
#include <vector>

#include "platform/Messages.h"
#include "platform/Tray.h"
#include "platform/Window.h"

namespace {

using platform::Message;
using platform::MessageKind;

constexpr int kToggle = 55556;
constexpr int kExit = 55555;

bool Succeeds(const std::string& command) {
    return std::system(("{ " + command + "; } >/dev/null 2>&1").c_str()) == 0;
}

// A session bus of our own, there before GTK looks for one.
class PrivateBus : public testing::Environment {
public:
    void SetUp() override {
        setenv("NO_AT_BRIDGE", "1", 1);
        const std::string display = std::getenv("DISPLAY");
        bus = g_test_dbus_new(G_TEST_DBUS_NONE);
        g_test_dbus_up(bus);
        setenv("DISPLAY", display.c_str(), 1);  // which starting the bus forgets
    }
    void TearDown() override { g_test_dbus_stop(bus); }

private:
    GTestDBus* bus = nullptr;
};
[[maybe_unused]] const auto* const kBus =
    std::getenv("DISPLAY") != nullptr ? testing::AddGlobalTestEnvironment(new PrivateBus) : nullptr;

class OnDisplay : public testing::Test {
protected:
    void SetUp() override {
        if (std::getenv("DISPLAY") == nullptr || !Succeeds("xdotool getmouselocation") ||
            !Succeeds("xprop -root _NET_SUPPORTING_WM_CHECK | grep window")) {
            GTEST_SKIP() << "no display with a window manager and xdotool";
        }
        ASSERT_FALSE(platform::OpenDisplay());
    }
};

// The desktop's side of StatusNotifierItem, on a connection of its own.
class NotifierHost {
public:
    NotifierHost() {
        GError* error = nullptr;
        gchar* address = g_dbus_address_get_for_bus_sync(G_BUS_TYPE_SESSION, nullptr, nullptr);
        bus = g_dbus_connection_new_for_address_sync(
            address,
            static_cast<GDBusConnectionFlags>(G_DBUS_CONNECTION_FLAGS_AUTHENTICATION_CLIENT |
                                              G_DBUS_CONNECTION_FLAGS_MESSAGE_BUS_CONNECTION),
            nullptr, nullptr, &error);
        g_free(address);
        EXPECT_NE(bus, nullptr) << (error != nullptr ? error->message : "");
        GDBusNodeInfo* info = g_dbus_node_info_new_for_xml(
            "<node><interface name='org.kde.StatusNotifierWatcher'>"
            "<method name='RegisterStatusNotifierItem'><arg type='s'/></method></interface></node>",
            nullptr);
        static const GDBusInterfaceVTable kFunctions = {
            [](GDBusConnection*, const gchar*, const gchar*, const gchar*, const gchar*,
               GVariant* parameters, GDBusMethodInvocation* invocation, gpointer self) {
                const gchar* name = nullptr;
                g_variant_get(parameters, "(&s)", &name);
                static_cast<NotifierHost*>(self)->item = name;
                g_dbus_method_invocation_return_value(invocation, nullptr);
            },
            nullptr,
            nullptr,
            {}};
        object =
            g_dbus_connection_register_object(bus, "/StatusNotifierWatcher", info->interfaces[0],
                                              &kFunctions, this, nullptr, nullptr);
        name = g_bus_own_name_on_connection(bus, "org.kde.StatusNotifierWatcher",
                                            G_BUS_NAME_OWNER_FLAGS_NONE, nullptr, nullptr, nullptr,
                                            nullptr);
        g_dbus_node_info_unref(info);
    }

    ~NotifierHost() {
        g_bus_unown_name(name);
        g_dbus_connection_unregister_object(bus, object);
        g_object_unref(bus);
    }
    NotifierHost(const NotifierHost&) = delete;
    NotifierHost& operator=(const NotifierHost&) = delete;

    // The answer arrives while the game's queue is pumped.
    void Call(const char* interface, const char* method, GVariant* parameters) {
        g_dbus_connection_call(
            bus, item.c_str(), "/StatusNotifierItem", interface, method, parameters, nullptr,
            G_DBUS_CALL_FLAGS_NONE, 2000, nullptr,
            [](GObject* source, GAsyncResult* result, gpointer data) {
                const std::unique_ptr<Answer> mailbox(static_cast<Answer*>(data));
                GVariant* value =
                    g_dbus_connection_call_finish(G_DBUS_CONNECTION(source), result, nullptr);
                gchar* text = value != nullptr ? g_variant_print(value, FALSE) : g_strdup("failed");
                **mailbox = text;
                g_free(text);
                if (value != nullptr) {
                    g_variant_unref(value);
                }
            },
            new Answer(answer));
    }

    std::string item;  // the bus name that asked to be shown
    // Of the last call; shared, since an answer may come when the host has gone.
    using Answer = std::shared_ptr<std::string>;
    Answer answer = std::make_shared<std::string>();

private:
    GDBusConnection* bus = nullptr;
    guint object = 0;
    guint name = 0;
};

// What the game's queue delivers.
std::vector<Message> delivered;

class Tray : public OnDisplay {
protected:
    void SetUp() override {
        OnDisplay::SetUp();
        if (IsSkipped()) {
            return;
        }
        delivered.clear();
        window = MakeWindow();
        ASSERT_NE(window, nullptr);
    }
    void TearDown() override {
        platform::RemoveTrayIcon();
        platform::DestroyGameWindow(window);
        StopTray();
    }
    static platform::WindowHandle MakeWindow() {
        platform::WindowOptions options;
        options.title = "Tray test";
        options.width = 200;
        options.height = 150;
        return platform::CreateGameWindow(options);
    }
    static bool AddIcon() { return platform::AddTrayIcon("Icon", "Nebulorix running"); }

    // Pumps the game's queue until the condition holds; tray clicks open the menu as in the game.
    static bool Within(int ms, const std::function<bool()>& condition) {
        const auto deadline = std::chrono::steady_clock::now() + std::chrono::milliseconds(ms);
        while (!condition()) {
            if (std::chrono::steady_clock::now() > deadline) {
                return false;
            }
            Message message;
            while (platform::PeekMessage(message)) {
                delivered.push_back(message);
                if (message.kind == MessageKind::Tray) {
                    platform::PopupTrayMenu(
                        {{platform::TrayMenuItem::Kind::Picture, "TrayMenu", 0},
                         {platform::TrayMenuItem::Kind::Text, "Toggle Fullscreen", kToggle},
                         {platform::TrayMenuItem::Kind::Separator, "", 0},
                         {platform::TrayMenuItem::Kind::Text, "Exit", kExit}});
                }
            }
            std::this_thread::sleep_for(std::chrono::milliseconds(10));
        }
        return true;
    }
    static bool Got(MessageKind kind, int code) {
        for (const Message& message : delivered) {
            if (message.kind == kind && message.code == code) {
                return true;
            }
        }
        return false;
    }
    // A tray along the upper edge: the icon is in the upper right corner.
    void StartTray() {
        trayProcess = fork();
        if (trayProcess == 0) {
            execlp("trayer", "trayer", "--edge", "top", "--align", "right", "--widthtype",
                   "request", "--height", "32", static_cast<char*>(nullptr));
            _exit(127);
        }
    }
    void StopTray() {
        if (trayProcess > 0) {
            kill(trayProcess, SIGTERM);
            waitpid(trayProcess, nullptr, 0);
            trayProcess = 0;
        }
    }
    static bool TrayHoldsAnIcon() {
        return Succeeds("xwininfo -name panel -tree | grep -i nebulorix");
    }
    // Chooses with the keyboard once the menu is there.
    static void Choose(const char* key) {
        Within(600, [] { return false; });
        Succeeds(std::string("xdotool key ") + key);
        Within(200, [] { return false; });
        Succeeds("xdotool key Return");
    }

    platform::WindowHandle window = nullptr;
    pid_t trayProcess = 0;
};

TEST_F(Tray, ADesktopWithoutAClassicTrayGetsAStatusNotifier) {
    NotifierHost host;
    AddIcon();
    ASSERT_TRUE(Within(5000, [&host] { return !host.item.empty(); }));
    EXPECT_FALSE(AddIcon()) << "now there is a host";
    host.Call("org.freedesktop.DBus.Properties", "GetAll",
              g_variant_new("(s)", "org.kde.StatusNotifierItem"));
    ASSERT_TRUE(Within(2000, [&host] { return !host.answer->empty(); }));
    EXPECT_NE(host.answer->find("'Nebulorix running'"), std::string::npos) << *host.answer;
    EXPECT_NE(host.answer->find("'Active'"), std::string::npos);

    host.Call("org.kde.StatusNotifierItem", "Activate", g_variant_new("(ii)", 60, 60));
    ASSERT_TRUE(Within(2000, [] { return Got(MessageKind::Tray, platform::kTrayLeftButton); }));
    Choose("Up");
    EXPECT_TRUE(Within(2000, [] { return Got(MessageKind::Command, kExit); }));

    platform::RemoveTrayIcon();
    delivered.clear();
    host.Call("org.kde.StatusNotifierItem", "Activate", g_variant_new("(ii)", 60, 60));
    EXPECT_FALSE(Within(300, [] { return Got(MessageKind::Tray, platform::kTrayLeftButton); }))
        << "a removed icon takes no clicks";
    if (Succeeds("which trayer")) {
        AddIcon();
        StartTray();
        ASSERT_TRUE(Within(5000, TrayHoldsAnIcon));
        host.answer->clear();
        EXPECT_TRUE(Within(3000, [&host] {
            host.Call("org.freedesktop.DBus.Properties", "GetAll",
                      g_variant_new("(s)", "org.kde.StatusNotifierItem"));
            return host.answer->find("'Passive'") != std::string::npos;
        })) << "one icon at a time";
    }
}

}  // namespace
