// What the X tools cannot tell, for the desktop tests:
//   x11_helper shape <window>
//                           prints "bounding <x> <y> <w> <h>" and "input <x> <y> <w> <h>": the
//                           extents of the window's shape regions, in its own coordinates
//   x11_helper compositor   prints "yes" while a compositing manager runs, else "no"
//   x11_helper backdrop     a white desktop window over the whole screen (some compositors paint
//                           the root black); prints its id and runs until it is killed
#include <algorithm>
#include <array>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <memory>
#include <string_view>
#include <xcb/shape.h>
#include <xcb/xcb.h>

namespace {

template <typename T> using Reply = std::unique_ptr<T, decltype(&std::free)>;

xcb_atom_t atom(xcb_connection_t* xcb, const char* name) {
    const auto cookie =
        xcb_intern_atom(xcb, 0, static_cast<std::uint16_t>(std::strlen(name)), name);
    Reply<xcb_intern_atom_reply_t> reply(xcb_intern_atom_reply(xcb, cookie, nullptr), &std::free);
    return reply ? reply->atom : xcb_atom_t{XCB_ATOM_NONE};
}

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

int backdrop(xcb_connection_t* xcb, const xcb_screen_t* screen) {
    const xcb_window_t id = xcb_generate_id(xcb);
    const std::uint32_t white = screen->white_pixel;
    xcb_create_window(xcb, XCB_COPY_FROM_PARENT, id, screen->root, 0, 0, screen->width_in_pixels,
                      screen->height_in_pixels, 0, XCB_WINDOW_CLASS_INPUT_OUTPUT,
                      screen->root_visual, XCB_CW_BACK_PIXEL, &white);
    // Typed before it is mapped, so that the window manager keeps it below every other window
    // from the start; a type set later needs the window mapped again, which some managers trip on.
    const xcb_atom_t desktop = atom(xcb, "_NET_WM_WINDOW_TYPE_DESKTOP");
    xcb_change_property(xcb, XCB_PROP_MODE_REPLACE, id, atom(xcb, "_NET_WM_WINDOW_TYPE"),
                        XCB_ATOM_ATOM, 32, 1, &desktop);
    xcb_map_window(xcb, id);
    xcb_flush(xcb);
    std::printf("%u\n", id);
    std::fflush(stdout);
    while (xcb_generic_event_t* event = xcb_wait_for_event(xcb)) {
        std::free(event);
    }
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
    if (mode == "shape" && argc > 2) {
        return shape(xcb, static_cast<xcb_window_t>(std::strtoul(argv[2], nullptr, 0)));
    }
    if (mode == "compositor") {
        return compositor(xcb);
    }
    if (mode == "backdrop") {
        return backdrop(xcb, screen);
    }
    std::fprintf(stderr, "usage: x11_helper shape <window> | compositor | backdrop\n");
    return 2;
}
