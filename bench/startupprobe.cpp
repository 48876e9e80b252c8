// SPDX-License-Identifier: MIT
// Starts a program and tells in one line what it took:
// ms from exec to the first large window, CPU ms until then, and, when it is let idle, its
// memory in MiB of PSS and the CPU ms that it took meanwhile. Ends the program by SIGTERM.
// usage: bench_startup IDLE_SECONDS PROGRAM [ARGUMENT...]

#include <algorithm>
#include <chrono>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <ctime>
#include <fstream>
#include <memory>
#include <string>
#include <thread>

#include <poll.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>
#include <xcb/xcb.h>

namespace {

using Clock = std::chrono::steady_clock;

// Tray icons and tool tips are smaller than every main window.
constexpr int leastWidth = 400;
constexpr char pidProperty[] = "_NET_WM_PID";
constexpr std::chrono::seconds startLimit(60);
constexpr std::chrono::seconds settleTime(5);

struct FreeDeleter
{
    void operator()(void *memory) const { std::free(memory); }
};

template<typename T>
using Reply = std::unique_ptr<T, FreeDeleter>;

double milliseconds(Clock::duration duration)
{
    return std::chrono::duration<double, std::milli>(duration).count();
}

double cpuMs(pid_t pid)
{
    clockid_t clock = 0;
    timespec time = {};
    if (clock_getcpuclockid(pid, &clock) != 0 || clock_gettime(clock, &time) != 0)
        return 0.0;
    return double(time.tv_sec) * 1e3 + double(time.tv_nsec) / 1e6;
}

double pssMiB(pid_t pid)
{
    std::ifstream file("/proc/" + std::to_string(pid) + "/smaps_rollup");
    std::string line;
    while (std::getline(file, line)) {
        if (line.compare(0, 4, "Pss:") == 0)
            return std::stod(line.substr(4)) / 1024.0;
    }
    return 0.0;
}

bool isLarge(xcb_connection_t *connection, xcb_window_t window)
{
    const Reply<xcb_get_geometry_reply_t> geometry(
        xcb_get_geometry_reply(connection, xcb_get_geometry(connection, window), nullptr));
    return geometry && geometry->width >= leastWidth;
}

xcb_atom_t pidAtom(xcb_connection_t *connection)
{
    const Reply<xcb_intern_atom_reply_t> reply(xcb_intern_atom_reply(
        connection, xcb_intern_atom(connection, 0, sizeof pidProperty - 1, pidProperty), nullptr));
    return reply ? reply->atom : xcb_atom_t(XCB_ATOM_NONE);
}

// Also when the window is a frame that the window manager has put around it.
bool isOf(xcb_connection_t *connection, xcb_window_t window, xcb_atom_t atom, pid_t pid)
{
    const Reply<xcb_get_property_reply_t> owner(xcb_get_property_reply(
        connection, xcb_get_property(connection, 0, window, atom, XCB_ATOM_CARDINAL, 0, 1),
        nullptr));
    if (owner && xcb_get_property_value_length(owner.get()) == 4)
        return *static_cast<uint32_t *>(xcb_get_property_value(owner.get())) == uint32_t(pid);
    const Reply<xcb_query_tree_reply_t> tree(
        xcb_query_tree_reply(connection, xcb_query_tree(connection, window), nullptr));
    if (!tree)
        return false;
    const xcb_window_t *children = xcb_query_tree_children(tree.get());
    const auto isOwn = [&](xcb_window_t child) { return isOf(connection, child, atom, pid); };
    return std::any_of(children, children + xcb_query_tree_children_length(tree.get()), isOwn);
}

bool waitForWindow(xcb_connection_t *connection, pid_t pid)
{
    const xcb_atom_t atom = pidAtom(connection);
    const Clock::time_point end = Clock::now() + startLimit;
    pollfd input = {xcb_get_file_descriptor(connection), POLLIN, 0};
    while (Clock::now() < end) {
        while (const Reply<xcb_generic_event_t> event{xcb_poll_for_event(connection)}) {
            if ((event->response_type & 0x7f) != XCB_MAP_NOTIFY)
                continue;
            const auto *mapped = reinterpret_cast<const xcb_map_notify_event_t *>(event.get());
            if (isLarge(connection, mapped->window) && isOf(connection, mapped->window, atom, pid))
                return true;
        }
        poll(&input, 1, 100);
    }
    return false;
}

void watchRoot(xcb_connection_t *connection)
{
    const xcb_window_t root = xcb_setup_roots_iterator(xcb_get_setup(connection)).data->root;
    const uint32_t mask = XCB_EVENT_MASK_SUBSTRUCTURE_NOTIFY;
    xcb_change_window_attributes(connection, root, XCB_CW_EVENT_MASK, &mask);
    // An answer means that the server watches by now.
    isLarge(connection, root);
}

void report(xcb_connection_t *connection, pid_t pid, Clock::time_point start, int idleSeconds)
{
    if (!waitForWindow(connection, pid)) {
        std::fprintf(stderr, "no window\n");
        return;
    }
    const double mapped = milliseconds(Clock::now() - start);
    std::printf("%.1f %.1f", mapped, cpuMs(pid));
    if (idleSeconds > 0) {
        std::this_thread::sleep_for(settleTime);
        const double before = cpuMs(pid);
        std::printf(" %.1f", pssMiB(pid));
        std::this_thread::sleep_for(std::chrono::seconds(idleSeconds));
        std::printf(" %.1f", cpuMs(pid) - before);
    }
    std::printf("\n");
}

} // namespace

int main(int argc, char *argv[])
{
    if (argc < 3)
        return 2;
    xcb_connection_t *connection = xcb_connect(nullptr, nullptr);
    if (xcb_connection_has_error(connection) != 0) {
        std::fprintf(stderr, "no display\n");
        return 2;
    }
    watchRoot(connection);
    pid_t pid = 0;
    const Clock::time_point start = Clock::now();
    if (posix_spawn(&pid, argv[2], nullptr, nullptr, argv + 2, environ) != 0)
        return 2;
    report(connection, pid, start, std::atoi(argv[1]));
    kill(pid, SIGTERM);
    int status = 0;
    waitpid(pid, &status, 0);
    xcb_disconnect(connection);
    return 0;
}
