// A stand-in for other programs on the desktop, for the desktop tests:
//   x11_helper window       an ordinary application window; prints its id, then one line
//                           "key <keycode>" for every key it receives
//   x11_helper grab         holds Ctrl+Alt+T as another program would; prints "grabbed"
//   x11_helper panel <h>    a top panel that reserves <h> pixels; prints its id
//   x11_helper backdrop     a white desktop window over the whole screen, below every other
//                           window; prints its id, then one line "button <x> <y>" (screen
//                           coordinates) for every click it receives
// Each runs until it is killed. Probes:
//   x11_helper shape <window>
//                           prints "bounding <x> <y> <w> <h>" and "input <x> <y> <w> <h>": the
//                           extents of the window's shape regions, in its own coordinates
//   x11_helper compositor   prints "yes" while a compositing manager runs, else "no"
//   x11_helper above <a> <b>
//                           prints "yes" when window a (with its frame) is stacked above b
//   x11_helper first-frame <x> <y> <program>...
//                           for the whole-process figures: starts the program and prints the
//                           milliseconds until the screen pixel at <x>,<y> turns black (the island
//                           drawn over a white root)
#include <X11/keysym.h>
#include <algorithm>
#include <array>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <memory>
#include <string_view>
#include <thread>
#include <unistd.h>
#include <xcb/shape.h>
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
    // Both forms of the strut: some window managers read only the partial one.
    const std::array<std::uint32_t, 12> strut{
        0, 0, height, 0, 0, 0, 0, 0, 0, screen->width_in_pixels - 201u, 0, 0};
    xcb_change_property(xcb, XCB_PROP_MODE_REPLACE, id, atom(xcb, "_NET_WM_STRUT"),
                        XCB_ATOM_CARDINAL, 32, 4, strut.data());
    xcb_change_property(xcb, XCB_PROP_MODE_REPLACE, id, atom(xcb, "_NET_WM_STRUT_PARTIAL"),
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

int backdrop(xcb_connection_t* xcb, const xcb_screen_t* screen) {
    // A desktop window, as a file manager shows the desktop: the window manager keeps it below
    // every other window, undecorated, where it asks to be.
    const xcb_window_t id = xcb_generate_id(xcb);
    const std::array<std::uint32_t, 2> values{screen->white_pixel, XCB_EVENT_MASK_BUTTON_PRESS};
    xcb_create_window(xcb, XCB_COPY_FROM_PARENT, id, screen->root, 0, 0, screen->width_in_pixels,
                      screen->height_in_pixels, 0, XCB_WINDOW_CLASS_INPUT_OUTPUT,
                      screen->root_visual, XCB_CW_BACK_PIXEL | XCB_CW_EVENT_MASK, values.data());
    const xcb_atom_t desktop = atom(xcb, "_NET_WM_WINDOW_TYPE_DESKTOP");
    xcb_change_property(xcb, XCB_PROP_MODE_REPLACE, id, atom(xcb, "_NET_WM_WINDOW_TYPE"),
                        XCB_ATOM_ATOM, 32, 1, &desktop);
    xcb_map_window(xcb, id);
    xcb_flush(xcb);
    std::printf("%u\n", id);
    std::fflush(stdout);
    while (xcb_generic_event_t* event = xcb_wait_for_event(xcb)) {
        if ((event->response_type & 0x7F) == XCB_BUTTON_PRESS) {
            const auto* press = reinterpret_cast<xcb_button_press_event_t*>(event);
            std::printf("button %d %d\n", press->root_x, press->root_y);
            std::fflush(stdout);
        }
        std::free(event);
    }
    return 0;
}

template <typename T> using Reply = std::unique_ptr<T, decltype(&std::free)>;

int shape(xcb_connection_t* xcb, xcb_window_t window) {
    const std::array<std::pair<const char*, xcb_shape_kind_t>, 2> kinds{
        {{"bounding", XCB_SHAPE_SK_BOUNDING}, {"input", XCB_SHAPE_SK_INPUT}}};
    for (const auto& [name, kind] : kinds) {
        Reply<xcb_shape_get_rectangles_reply_t> reply(
            xcb_shape_get_rectangles_reply(xcb, xcb_shape_get_rectangles(xcb, window, kind),
                                           nullptr),
            &std::free);
        if (!reply) {
            return 1;
        }
        const xcb_rectangle_t* rects = xcb_shape_get_rectangles_rectangles(reply.get());
        const int count = xcb_shape_get_rectangles_rectangles_length(reply.get());
        int left = 0, top = 0, right = 0, bottom = 0;
        for (int i = 0; i < count; ++i) {
            const auto& r = rects[i];
            left = i == 0 ? r.x : std::min<int>(left, r.x);
            top = i == 0 ? r.y : std::min<int>(top, r.y);
            right = std::max(right, r.x + r.width);
            bottom = std::max(bottom, r.y + r.height);
        }
        std::printf("%s %d %d %d %d\n", name, left, top, right - left, bottom - top);
    }
    return 0;
}

int compositor(xcb_connection_t* xcb) {
    Reply<xcb_get_selection_owner_reply_t> owner(
        xcb_get_selection_owner_reply(xcb, xcb_get_selection_owner(xcb, atom(xcb, "_NET_WM_CM_S0")),
                                      nullptr),
        &std::free);
    std::printf("%s\n", owner && owner->owner != XCB_NONE ? "yes" : "no");
    return 0;
}

// The child of the root that holds the window: its frame, or the window itself.
xcb_window_t topLevel(xcb_connection_t* xcb, xcb_window_t window) {
    while (true) {
        Reply<xcb_query_tree_reply_t> tree(
            xcb_query_tree_reply(xcb, xcb_query_tree(xcb, window), nullptr), &std::free);
        if (!tree || tree->parent == tree->root || tree->parent == XCB_NONE) {
            return window;
        }
        window = tree->parent;
    }
}

int above(xcb_connection_t* xcb, const xcb_screen_t* screen, xcb_window_t a, xcb_window_t b) {
    const xcb_window_t frameA = topLevel(xcb, a);
    const xcb_window_t frameB = topLevel(xcb, b);
    Reply<xcb_query_tree_reply_t> tree(
        xcb_query_tree_reply(xcb, xcb_query_tree(xcb, screen->root), nullptr), &std::free);
    if (!tree) {
        return 1;
    }
    // The root's children, bottom first.
    const xcb_window_t* children = xcb_query_tree_children(tree.get());
    const int count = xcb_query_tree_children_length(tree.get());
    int positionA = -1, positionB = -1;
    for (int i = 0; i < count; ++i) {
        positionA = children[i] == frameA ? i : positionA;
        positionB = children[i] == frameB ? i : positionB;
    }
    std::printf("%s\n", positionA > positionB && positionB >= 0 ? "yes" : "no");
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

xcb_window_t windowId(const char* id) {
    return static_cast<xcb_window_t>(std::strtoul(id, nullptr, 0));
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
    if (mode == "backdrop") {
        return backdrop(xcb, screen);
    }
    if (mode == "shape" && argc > 2) {
        return shape(xcb, windowId(argv[2]));
    }
    if (mode == "compositor") {
        return compositor(xcb);
    }
    if (mode == "above" && argc > 3) {
        return above(xcb, screen, windowId(argv[2]), windowId(argv[3]));
    }
    if (mode == "first-frame" && argc > 4) {
        return firstFrame(xcb, screen, static_cast<std::int16_t>(std::atoi(argv[2])),
                          static_cast<std::int16_t>(std::atoi(argv[3])), argv + 4);
    }
    std::fprintf(stderr, "usage: x11_helper window | grab | panel <height> | backdrop | "
                         "shape <window> | compositor | above <a> <b> | "
                         "first-frame <x> <y> <program>...\n");
    return 2;
}
