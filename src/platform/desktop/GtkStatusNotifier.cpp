#include "platform/desktop/GtkStatusNotifier.h"

#include <gio/gio.h>
#include <unistd.h>

#include <cstring>
#include <string>
#include <string_view>

namespace platform {

namespace {

constexpr const char* kWatcher = "org.kde.StatusNotifierWatcher";
constexpr const char* kWatcherPath = "/StatusNotifierWatcher";
constexpr const char* kItem = "org.kde.StatusNotifierItem";
constexpr const char* kItemPath = "/StatusNotifierItem";

constexpr const char* kItemInterface = R"xml(<node>
  <interface name="org.kde.StatusNotifierItem">
    <property name="Category" type="s" access="read"/>
    <property name="Id" type="s" access="read"/>
    <property name="Title" type="s" access="read"/>
    <property name="Status" type="s" access="read"/>
    <property name="WindowId" type="i" access="read"/>
    <property name="IconName" type="s" access="read"/>
    <property name="IconPixmap" type="a(iiay)" access="read"/>
    <property name="ToolTip" type="(sa(iiay)ss)" access="read"/>
    <property name="ItemIsMenu" type="b" access="read"/>
    <method name="Activate"><arg type="i" name="x"/><arg type="i" name="y"/></method>
    <method name="SecondaryActivate"><arg type="i" name="x"/><arg type="i" name="y"/></method>
    <method name="ContextMenu"><arg type="i" name="x"/><arg type="i" name="y"/></method>
    <method name="Scroll"><arg type="i" name="delta"/><arg type="s" name="direction"/></method>
    <signal name="NewStatus"><arg type="s" name="status"/></signal>
  </interface>
</node>)xml";

struct Notifier {
    GDBusConnection* bus = nullptr;
    GDBusNodeInfo* interfaces = nullptr;
    GdkPixbuf* picture = nullptr;
    std::string tip;
    void (*clicked)(bool mainAction, int x, int y) = nullptr;
    std::string busName;   // the item's own
    guint object = 0;      // registration on the bus; 0 when none
    bool hasHost = false;  // a watcher is there
    bool nameOwned = false;
    bool visible = false;
};
Notifier notifier;

const char* Status() {
    return notifier.visible ? "Active" : "Passive";
}

// Rows from the top, each pixel as alpha, red, green, blue.
GVariant* IconPixmap() {
    GVariantBuilder pictures;
    g_variant_builder_init(&pictures, G_VARIANT_TYPE("a(iiay)"));
    if (notifier.picture != nullptr) {
        const int width = gdk_pixbuf_get_width(notifier.picture);
        const int height = gdk_pixbuf_get_height(notifier.picture);
        const int channels = gdk_pixbuf_get_n_channels(notifier.picture);
        const int stride = gdk_pixbuf_get_rowstride(notifier.picture);
        const guint8* rows = gdk_pixbuf_read_pixels(notifier.picture);
        GVariantBuilder bytes;
        g_variant_builder_init(&bytes, G_VARIANT_TYPE("ay"));
        for (int y = 0; y < height; ++y) {
            for (int x = 0; x < width; ++x) {
                const guint8* pixel = rows + static_cast<ptrdiff_t>(y) * stride +
                                      static_cast<ptrdiff_t>(x) * channels;
                const guint8 alpha = channels == 4 ? pixel[3] : guint8{255};
                for (const guint8 byte : {alpha, pixel[0], pixel[1], pixel[2]}) {
                    g_variant_builder_add(&bytes, "y", byte);
                }
            }
        }
        g_variant_builder_add(&pictures, "(iiay)", width, height, &bytes);
    }
    return g_variant_builder_end(&pictures);
}

GVariant* ToolTip() {
    return g_variant_new("(sa(iiay)ss)", "", nullptr, notifier.tip.c_str(), "");
}

GVariant* OnGetProperty(GDBusConnection*, const gchar*, const gchar*, const gchar*,
                        const gchar* property, GError**, gpointer) {
    const std::string_view name(property);
    if (name == "IconPixmap") {
        return IconPixmap();
    }
    if (name == "ToolTip") {
        return ToolTip();
    }
    if (name == "WindowId") {
        return g_variant_new_int32(0);
    }
    if (name == "ItemIsMenu") {
        return g_variant_new_boolean(FALSE);
    }
    const char* text = "";  // IconName: the picture is ours
    if (name == "Category") {
        text = "ApplicationStatus";
    } else if (name == "Id") {
        text = "nebulorix";
    } else if (name == "Title") {
        text = "Nebulorix";
    } else if (name == "Status") {
        text = Status();
    }
    return g_variant_new_string(text);
}

void OnMethod(GDBusConnection*, const gchar*, const gchar*, const gchar*, const gchar* method,
              GVariant* parameters, GDBusMethodInvocation* invocation, gpointer) {
    g_dbus_method_invocation_return_value(invocation, nullptr);
    if (std::strcmp(method, "Scroll") == 0 || !notifier.visible) {
        return;
    }
    gint32 x = 0;
    gint32 y = 0;
    g_variant_get(parameters, "(ii)", &x, &y);
    notifier.clicked(std::strcmp(method, "Activate") == 0, x, y);
}

constexpr GDBusInterfaceVTable kItemFunctions = {OnMethod, OnGetProperty, nullptr, {}};

// The icon is announced when it shall be seen, its name is ours and somebody listens.
void Announce() {
    if (notifier.visible && notifier.hasHost && notifier.nameOwned) {
        g_dbus_connection_call(notifier.bus, kWatcher, kWatcherPath, kWatcher,
                               "RegisterStatusNotifierItem",
                               g_variant_new("(s)", notifier.busName.c_str()), nullptr,
                               G_DBUS_CALL_FLAGS_NONE, -1, nullptr, nullptr, nullptr);
    }
}

void OnNameAcquired(GDBusConnection*, const gchar*, gpointer) {
    notifier.nameOwned = true;
    Announce();
}

void OnNameLost(GDBusConnection*, const gchar*, gpointer) {
    notifier.nameOwned = false;
}

void RegisterItem(GDBusConnection* bus) {
    notifier.bus = G_DBUS_CONNECTION(g_object_ref(bus));
    notifier.interfaces = g_dbus_node_info_new_for_xml(kItemInterface, nullptr);
    notifier.object =
        g_dbus_connection_register_object(bus, kItemPath, notifier.interfaces->interfaces[0],
                                          &kItemFunctions, nullptr, nullptr, nullptr);
    notifier.busName = std::string(kItem) + "-" + std::to_string(getpid()) + "-1";
    g_bus_own_name_on_connection(bus, notifier.busName.c_str(), G_BUS_NAME_OWNER_FLAGS_NONE,
                                 OnNameAcquired, OnNameLost, nullptr, nullptr);
}

void OnWatcherAppeared(GDBusConnection* bus, const gchar*, const gchar*, gpointer) {
    g_dbus_connection_set_exit_on_close(bus, FALSE);  // the game outlives its desktop's bus
    notifier.hasHost = true;
    if (notifier.object == 0) {
        RegisterItem(bus);
    } else {
        Announce();
    }
}

void OnWatcherVanished(GDBusConnection*, const gchar*, gpointer) {
    notifier.hasHost = false;
}

// GLib would start a bus for us where there is none; nobody would listen on that one.
bool HasSessionBus() {
    const std::string runtimeBus = std::string(g_get_user_runtime_dir()) + "/bus";
    return g_getenv("DBUS_SESSION_BUS_ADDRESS") != nullptr ||
           g_file_test(runtimeBus.c_str(), G_FILE_TEST_EXISTS) != FALSE;
}

}  // namespace

void StartStatusNotifier(GdkPixbuf* picture, const char* tip,
                         void (*clicked)(bool mainAction, int x, int y)) {
    notifier.picture = picture;
    notifier.tip = tip;
    notifier.clicked = clicked;
    if (HasSessionBus()) {
        g_bus_watch_name(G_BUS_TYPE_SESSION, kWatcher, G_BUS_NAME_WATCHER_FLAGS_NONE,
                         OnWatcherAppeared, OnWatcherVanished, nullptr, nullptr);
    }
}

void ShowStatusNotifier(bool visible) {
    if (notifier.visible == visible) {
        return;
    }
    notifier.visible = visible;
    if (notifier.object != 0) {
        g_dbus_connection_emit_signal(notifier.bus, nullptr, kItemPath, kItem, "NewStatus",
                                      g_variant_new("(s)", Status()), nullptr);
    }
    Announce();
}

bool StatusNotifierHasHost() {
    return notifier.hasHost;
}

}  // namespace platform
