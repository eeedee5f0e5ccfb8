// A program with windows of all kinds, for tests of what sees windows from outside.
//
//   kestrune-windows [OPTION | KIND]…
//
// KIND opens a window: normal, transient, skip, dock, dialog, utility, splash, desktop or stubborn (takes no part in
// closing). Options hold for the windows after them: class=NAME, pid=NUMBER, machine=NAME (_NET_WM_PID and
// WM_CLIENT_MACHINE as written there, this process's own without), mute (says neither). It prints "shown" when all are
// mapped, "asked" for each request to close, and goes on. A line on its input makes it grab the server for as long as
// it waits for the next one; it ends with its input.
#include <poll.h>
#include <unistd.h>
#include <xcb/xcb.h>

#include <array>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace {

struct Free {
    void operator()(void* memory) const { std::free(memory); }
};

struct Style {
    std::string windowClass = "Windows";
    std::string machine;
    std::uint32_t pid = 0;
    bool isMute = false;
};

class Client {
public:
    Client() : m_connection(xcb_connect(nullptr, nullptr)), m_activeWindow(atom("_NET_ACTIVE_WINDOW")) {}

    Client(const Client&) = delete;
    Client& operator=(const Client&) = delete;

    ~Client() { xcb_disconnect(m_connection); }

    void open(const std::string& kind, const Style& style) {
        const xcb_screen_t* const screen = xcb_setup_roots_iterator(xcb_get_setup(m_connection)).data;
        const xcb_window_t window = xcb_generate_id(m_connection);
        xcb_create_window(m_connection, XCB_COPY_FROM_PARENT, window, screen->root, 40, 40, 160, 90, 0,
                          XCB_WINDOW_CLASS_INPUT_OUTPUT, screen->root_visual, 0, nullptr);
        const std::string names = style.windowClass + '\0' + style.windowClass + '\0';
        setText(window, XCB_ATOM_WM_CLASS, names);
        if (!style.isMute) {
            setText(window, XCB_ATOM_WM_CLIENT_MACHINE, style.machine);
            set(window, atom("_NET_WM_PID"), XCB_ATOM_CARDINAL, style.pid);
        }
        if (kind != "stubborn") {
            set(window, atom("WM_PROTOCOLS"), XCB_ATOM_ATOM, atom("WM_DELETE_WINDOW"));
        }
        if (kind == "skip") {
            set(window, atom("_NET_WM_STATE"), XCB_ATOM_ATOM, atom("_NET_WM_STATE_SKIP_TASKBAR"));
        } else if (kind == "transient") {
            set(window, XCB_ATOM_WM_TRANSIENT_FOR, XCB_ATOM_WINDOW, m_first);
        } else if (kind != "normal" && kind != "stubborn") {
            std::string name = "_NET_WM_WINDOW_TYPE_";
            for (const char c : kind) {
                name += static_cast<char>(c - 'a' + 'A');
            }
            set(window, atom("_NET_WM_WINDOW_TYPE"), XCB_ATOM_ATOM, atom(name));
        }
        xcb_map_window(m_connection, window);
        m_first = m_first == XCB_NONE ? window : m_first;
    }

    int run() {
        say("shown");
        std::array<pollfd, 2> sources{{{STDIN_FILENO, POLLIN, 0}, {xcb_get_file_descriptor(m_connection), POLLIN, 0}}};
        while (xcb_flush(m_connection) > 0 && ::poll(sources.data(), sources.size(), -1) >= 0) {
            if (sources[0].revents != 0 && !readLine()) {
                return 0;
            }
            while (const std::unique_ptr<xcb_generic_event_t, Free> event{xcb_poll_for_event(m_connection)}) {
                constexpr unsigned sentByClient = 0x80;
                if ((event->response_type & ~sentByClient) == XCB_CLIENT_MESSAGE) {
                    say("asked");
                }
            }
        }
        return 1;
    }

    // Answers once the server has seen everything so far.
    void synchronize() {
        const std::unique_ptr<xcb_get_input_focus_reply_t, Free> reply(
            xcb_get_input_focus_reply(m_connection, xcb_get_input_focus(m_connection), nullptr));
    }

private:
    static void say(const char* word) {
        std::puts(word);
        static_cast<void>(std::fflush(stdout));
    }

    bool readLine() {
        char byte = '\0';
        do {
            if (::read(STDIN_FILENO, &byte, 1) != 1) {
                return false;
            }
        } while (byte != '\n');
        m_hasGrabbed = !m_hasGrabbed;
        if (m_hasGrabbed) {
            xcb_grab_server(m_connection);
            // Watchers of this property are told although nothing is added to it, and find nobody who answers them.
            const xcb_screen_t* const screen = xcb_setup_roots_iterator(xcb_get_setup(m_connection)).data;
            xcb_change_property(m_connection, XCB_PROP_MODE_APPEND, screen->root, m_activeWindow, XCB_ATOM_WINDOW, 32,
                                0, nullptr);
        } else {
            xcb_ungrab_server(m_connection);
        }
        synchronize();
        say(m_hasGrabbed ? "grabbed" : "released");
        return true;
    }

    xcb_atom_t atom(const std::string& name) {
        const std::unique_ptr<xcb_intern_atom_reply_t, Free> reply(xcb_intern_atom_reply(
            m_connection, xcb_intern_atom(m_connection, 0, static_cast<std::uint16_t>(name.size()), name.data()),
            nullptr));
        return reply ? reply->atom : xcb_atom_t{XCB_ATOM_NONE};
    }

    void setText(xcb_window_t window, xcb_atom_t property, const std::string& text) {
        xcb_change_property(m_connection, XCB_PROP_MODE_REPLACE, window, property, XCB_ATOM_STRING, 8,
                            static_cast<std::uint32_t>(text.size()), text.data());
    }

    void set(xcb_window_t window, xcb_atom_t property, xcb_atom_t type, std::uint32_t value) {
        xcb_change_property(m_connection, XCB_PROP_MODE_REPLACE, window, property, type, 32, 1, &value);
    }

    xcb_connection_t* m_connection;
    xcb_atom_t m_activeWindow;
    xcb_window_t m_first = XCB_NONE;
    bool m_hasGrabbed = false;
};

std::string ownMachine() {
    std::array<char, 256> name{};
    static_cast<void>(::gethostname(name.data(), name.size() - 1));
    return name.data();
}

}  // namespace

int main(int argc, char** argv) {
    Client client;
    Style style;
    style.machine = ownMachine();
    style.pid = static_cast<std::uint32_t>(::getpid());
    const std::vector<std::string> arguments(argv + 1, argv + argc);
    for (const std::string& argument : arguments) {
        const std::size_t equals = argument.find('=');
        const std::string value = equals == std::string::npos ? std::string{} : argument.substr(equals + 1);
        const std::string name = argument.substr(0, equals);
        if (name == "class") {
            style.windowClass = value;
        } else if (name == "machine") {
            style.machine = value;
        } else if (name == "pid") {
            style.pid = static_cast<std::uint32_t>(std::strtoul(value.c_str(), nullptr, 10));
        } else if (name == "mute") {
            style.isMute = true;
        } else {
            client.open(argument, style);
        }
    }
    client.synchronize();
    return client.run();
}
