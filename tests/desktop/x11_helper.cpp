// A stand-in for other programs on the desktop, for the desktop tests:
//   x11_helper window       an ordinary application window; prints its id, then one line
//                           "key <keycode>" for every key it receives
//   x11_helper grab         holds Ctrl+Alt+T as another program would; prints "grabbed"
//   x11_helper panel <h>    a top panel that reserves <h> pixels; prints its id
// Each runs until it is killed. Two probes:
//   x11_helper pixel <window> <x> <y>
//                           prints the window's own pixel as "<alpha> <red> <green> <blue>"
//                           (a depth-32 window keeps its alpha; the screen would show black)
//   x11_helper first-frame <x> <y> <program>...
//                           for the whole-process figures: starts the program and prints the
//                           milliseconds until the screen pixel at <x>,<y> turns black (the island
//                           drawn over a white root)
#include <X11/keysym.h>
#include <array>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <memory>
#include <string_view>
#include <thread>
#include <unistd.h>
#include <xcb/xcb.h>
#include <xcb/xcb_keysyms.h>

namespace {

xcb_atom_t atom(xcb_connection_t* xcb, const char* name) {
    const auto cookie =
        xcb_intern_atom(xcb, 0, static_cast<std::uint16_t>(std::strlen(name)), name);
    std::unique_ptr<xcb_intern_atom_reply_t, decltype(&std::free)> reply(
        xcb_intern_atom_reply(xcb, cookie, nullptr), &std::free);
    return reply ? reply->atom : xcb_atom_t{XCB_ATOM_NONE};
}

void setText(xcb_connection_t* xcb, xcb_window_t window, xcb_atom_t property,
             std::string_view text) {
    xcb_change_property(xcb, XCB_PROP_MODE_REPLACE, window, property, XCB_ATOM_STRING, 8,
                        static_cast<std::uint32_t>(text.size()), text.data());
}

xcb_window_t createWindow(xcb_connection_t* xcb, const xcb_screen_t* screen, std::int16_t y,
                          std::uint16_t width, std::uint16_t height) {
    const xcb_window_t window = xcb_generate_id(xcb);
    const std::array<std::uint32_t, 2> values{screen->white_pixel, XCB_EVENT_MASK_KEY_PRESS |
                                                                       XCB_EVENT_MASK_FOCUS_CHANGE};
    xcb_create_window(xcb, XCB_COPY_FROM_PARENT, window, screen->root, 100, y, width, height, 0,
                      XCB_WINDOW_CLASS_INPUT_OUTPUT, screen->root_visual,
                      XCB_CW_BACK_PIXEL | XCB_CW_EVENT_MASK, values.data());
    // WM_CLASS is two NUL-terminated strings: instance, then class.
    setText(xcb, window, XCB_ATOM_WM_CLASS, std::string_view("helper\0KeloTestHelper\0", 22));
    setText(xcb, window, XCB_ATOM_WM_NAME, "Kelo test helper");
    return window;
}

int window(xcb_connection_t* xcb, const xcb_screen_t* screen) {
    const xcb_window_t id = createWindow(xcb, screen, 300, 300, 200);
    xcb_map_window(xcb, id);
    xcb_flush(xcb);
    std::printf("%u\n", id);
    std::fflush(stdout);
    while (xcb_generic_event_t* event = xcb_wait_for_event(xcb)) {
        if ((event->response_type & 0x7F) == XCB_KEY_PRESS) {
            std::printf("key %u\n", reinterpret_cast<xcb_key_press_event_t*>(event)->detail);
            std::fflush(stdout);
        }
        std::free(event);
    }
    return 0;
}

int grab(xcb_connection_t* xcb, const xcb_screen_t* screen) {
    xcb_key_symbols_t* symbols = xcb_key_symbols_alloc(xcb);
    xcb_keycode_t* codes = xcb_key_symbols_get_keycode(symbols, XK_t);
    if (!codes || codes[0] == XCB_NO_SYMBOL) {
        return 2;
    }
    const auto cookie =
        xcb_grab_key_checked(xcb, 1, screen->root, XCB_MOD_MASK_CONTROL | XCB_MOD_MASK_1, codes[0],
                             XCB_GRAB_MODE_ASYNC, XCB_GRAB_MODE_ASYNC);
    std::free(codes);
    xcb_key_symbols_free(symbols);
    if (xcb_generic_error_t* error = xcb_request_check(xcb, cookie)) {
        std::printf("failed %u\n", error->error_code);
        return 1;
    }
    std::printf("grabbed\n");
    std::fflush(stdout);
    while (xcb_generic_event_t* event = xcb_wait_for_event(xcb)) {
        std::free(event);
    }
    return 0;
}

int panel(xcb_connection_t* xcb, const xcb_screen_t* screen, std::uint32_t height) {
    const xcb_window_t id = createWindow(xcb, screen, 0, screen->width_in_pixels - 200,
                                         static_cast<std::uint16_t>(height));
    const xcb_atom_t dock = atom(xcb, "_NET_WM_WINDOW_TYPE_DOCK");
    xcb_change_property(xcb, XCB_PROP_MODE_REPLACE, id, atom(xcb, "_NET_WM_WINDOW_TYPE"),
                        XCB_ATOM_ATOM, 32, 1, &dock);
    const std::array<std::uint32_t, 4> strut{0, 0, height, 0};
    xcb_change_property(xcb, XCB_PROP_MODE_REPLACE, id, atom(xcb, "_NET_WM_STRUT"),
                        XCB_ATOM_CARDINAL, 32, strut.size(), strut.data());
    xcb_map_window(xcb, id);
    xcb_flush(xcb);
    std::printf("%u\n", id);
    std::fflush(stdout);
    while (xcb_generic_event_t* event = xcb_wait_for_event(xcb)) {
        std::free(event);
    }
    return 0;
}

bool isBlack(xcb_connection_t* xcb, xcb_window_t root, std::int16_t x, std::int16_t y) {
    const auto cookie = xcb_get_image(xcb, XCB_IMAGE_FORMAT_Z_PIXMAP, root, x, y, 1, 1, 0x00FFFFFF);
    std::unique_ptr<xcb_get_image_reply_t, decltype(&std::free)> reply(
        xcb_get_image_reply(xcb, cookie, nullptr), &std::free);
    if (!reply || xcb_get_image_data_length(reply.get()) < 3) {
        return false;
    }
    const std::uint8_t* pixel = xcb_get_image_data(reply.get());
    return pixel[0] == 0 && pixel[1] == 0 && pixel[2] == 0;
}

int pixel(xcb_connection_t* xcb, xcb_window_t window, std::int16_t x, std::int16_t y) {
    const auto cookie = xcb_get_image(xcb, XCB_IMAGE_FORMAT_Z_PIXMAP, window, x, y, 1, 1, ~0U);
    std::unique_ptr<xcb_get_image_reply_t, decltype(&std::free)> reply(
        xcb_get_image_reply(xcb, cookie, nullptr), &std::free);
    if (!reply || reply->depth != 32 || xcb_get_image_data_length(reply.get()) < 4) {
        std::fprintf(stderr, "x11_helper: no 32-bit pixel there\n");
        return 1;
    }
    const std::uint8_t* bgra = xcb_get_image_data(reply.get());
    std::printf("%u %u %u %u\n", bgra[3], bgra[2], bgra[1], bgra[0]);
    return 0;
}

int firstFrame(xcb_connection_t* xcb, const xcb_screen_t* screen, std::int16_t x, std::int16_t y,
               char** program) {
    if (isBlack(xcb, screen->root, x, y)) {
        std::fprintf(stderr, "x11_helper: the probe pixel is black before the start\n");
        return 2;
    }
    const auto start = std::chrono::steady_clock::now();
    const pid_t child = fork();
    if (child == 0) {
        // The figures are this probe's only output; the program's own goes nowhere, and must
        // not hold the probe's output open after the probe is done.
        std::freopen("/dev/null", "w", stdout);
        std::freopen("/dev/null", "w", stderr);
        execvp(program[0], program);
        _exit(127);
    }
    const auto deadline = start + std::chrono::seconds(20);
    while (!isBlack(xcb, screen->root, x, y)) {
        if (std::chrono::steady_clock::now() > deadline) {
            std::printf("timeout %d\n", child);
            return 1;
        }
        std::this_thread::sleep_for(std::chrono::microseconds(500));
    }
    const std::chrono::duration<double, std::milli> elapsed =
        std::chrono::steady_clock::now() - start;
    std::printf("%.1f %d\n", elapsed.count(), child);
    return 0;
}

} // namespace

int main(int argc, char** argv) {
    int screenNumber = 0;
    xcb_connection_t* xcb = xcb_connect(nullptr, &screenNumber);
    if (xcb_connection_has_error(xcb)) {
        std::fprintf(stderr, "x11_helper: no X display\n");
        return 2;
    }
    const xcb_screen_t* screen = xcb_setup_roots_iterator(xcb_get_setup(xcb)).data;
    const std::string_view mode = argc > 1 ? argv[1] : "";
    if (mode == "window") {
        return window(xcb, screen);
    }
    if (mode == "grab") {
        return grab(xcb, screen);
    }
    if (mode == "panel" && argc > 2) {
        return panel(xcb, screen, static_cast<std::uint32_t>(std::atoi(argv[2])));
    }
    if (mode == "pixel" && argc > 4) {
        return pixel(xcb, static_cast<xcb_window_t>(std::strtoul(argv[2], nullptr, 10)),
                     static_cast<std::int16_t>(std::atoi(argv[3])),
                     static_cast<std::int16_t>(std::atoi(argv[4])));
    }
    if (mode == "first-frame" && argc > 4) {
        return firstFrame(xcb, screen, static_cast<std::int16_t>(std::atoi(argv[2])),
                          static_cast<std::int16_t>(std::atoi(argv[3])), argv + 4);
    }
    std::fprintf(stderr, "usage: x11_helper window | grab | panel <height> | "
                         "pixel <window> <x> <y> | first-frame <x> <y> <program>...\n");
    return 2;
}
