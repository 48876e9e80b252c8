// SPDX-License-Identifier: MIT
// Fills the screen with a picture in steady motion, until it is killed. The display server does all
// the work, so that little time is taken from what is measured beside.
#include <array>
#include <chrono>
#include <cstdint>
#include <random>
#include <thread>

#include <xcb/xcb.h>

namespace {

constexpr int step = 7; // pixels a frame, both ways
constexpr auto frameTime = std::chrono::microseconds(16667);
constexpr int tile = 512;

// Boxes of all sizes and colours, as windows and pictures have them.
void paint(xcb_connection_t *connection, xcb_pixmap_t pixmap, xcb_gcontext_t context)
{
    std::mt19937 random(1);
    const auto below = [&random](uint32_t limit) { return random() % limit; };
    for (int i = 0; i < 3000; ++i) {
        const uint32_t colour = random() & 0xffffff;
        const xcb_rectangle_t box = {int16_t(below(tile)), int16_t(below(tile)),
                                     uint16_t(1 + below(60)), uint16_t(1 + below(20))};
        xcb_change_gc(connection, context, XCB_GC_FOREGROUND, &colour);
        xcb_poly_fill_rectangle(connection, pixmap, context, 1, &box);
    }
}

} // namespace

int main()
{
    xcb_connection_t *const connection = xcb_connect(nullptr, nullptr);
    if (xcb_connection_has_error(connection) != 0)
        return 1;
    const xcb_screen_t *const screen = xcb_setup_roots_iterator(xcb_get_setup(connection)).data;
    const uint16_t width = screen->width_in_pixels;
    const uint16_t height = screen->height_in_pixels;
    const xcb_pixmap_t pixmap = xcb_generate_id(connection);
    const xcb_gcontext_t context = xcb_generate_id(connection);
    const xcb_window_t window = xcb_generate_id(connection);
    xcb_create_pixmap(connection, screen->root_depth, pixmap, screen->root, tile, tile);
    xcb_create_gc(connection, context, pixmap, 0, nullptr);
    paint(connection, pixmap, context);
    const std::array<uint32_t, 1> unmanaged = {1};
    xcb_create_window(connection, XCB_COPY_FROM_PARENT, window, screen->root, 0, 0, width, height,
                      0, XCB_WINDOW_CLASS_INPUT_OUTPUT, screen->root_visual,
                      XCB_CW_OVERRIDE_REDIRECT, unmanaged.data());
    xcb_map_window(connection, window);
    const xcb_gcontext_t tiled = xcb_generate_id(connection);
    xcb_create_gc(connection, tiled, window, 0, nullptr);
    auto next = std::chrono::steady_clock::now();
    for (int32_t at = 0; xcb_connection_has_error(connection) == 0; at = (at + step) % tile) {
        const std::array<uint32_t, 4> fill = {XCB_FILL_STYLE_TILED, pixmap, uint32_t(at),
                                              uint32_t(at)};
        xcb_change_gc(connection, tiled,
                      XCB_GC_FILL_STYLE | XCB_GC_TILE | XCB_GC_TILE_STIPPLE_ORIGIN_X |
                          XCB_GC_TILE_STIPPLE_ORIGIN_Y,
                      fill.data());
        const xcb_rectangle_t all = {0, 0, width, height};
        xcb_poly_fill_rectangle(connection, window, tiled, 1, &all);
        xcb_flush(connection);
        next += frameTime;
        std::this_thread::sleep_until(next);
    }
    return 0;
}
