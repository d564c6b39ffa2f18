#include "x11_shape.h"

#include "x11.h"

#include <QWindow>
#include <vector>
#include <xcb/shape.h>

namespace kelo::shell {
namespace {

std::vector<xcb_rectangle_t> rectangles(const QRegion& region) {
    std::vector<xcb_rectangle_t> list;
    list.reserve(static_cast<std::size_t>(region.rectCount()));
    for (const QRect& rect : region) {
        list.push_back({static_cast<std::int16_t>(rect.x()), static_cast<std::int16_t>(rect.y()),
                        static_cast<std::uint16_t>(rect.width()),
                        static_cast<std::uint16_t>(rect.height())});
    }
    return list;
}

void shape(const x11::Connection& x, xcb_window_t window, xcb_shape_kind_t kind,
           const QRegion& region) {
    const auto list = rectangles(region);
    // QRegion keeps its rectangles in y-x bands, which lets the server skip sorting them.
    xcb_shape_rectangles(x.xcb, XCB_SHAPE_SO_SET, kind, XCB_CLIP_ORDERING_YX_BANDED, window, 0, 0,
                         static_cast<std::uint32_t>(list.size()), list.data());
}

bool hasShapes(const x11::Connection& x) {
    // A request of an extension the server lacks would close the connection.
    const xcb_query_extension_reply_t* extension = xcb_get_extension_data(x.xcb, &xcb_shape_id);
    return extension && extension->present;
}

} // namespace

void applyShape(QWindow& window, const IslandRegions& regions) {
    const auto x = x11::connection();
    if (!x) {
        window.setMask(regions.input);
        return;
    }
    if (!hasShapes(*x)) {
        return;
    }
    const auto id = static_cast<xcb_window_t>(window.winId());
    shape(*x, id, XCB_SHAPE_SK_BOUNDING, regions.bounding);
    shape(*x, id, XCB_SHAPE_SK_INPUT, regions.input);
    xcb_flush(x->xcb);
}

void setBlurBehind(QWindow& window, const std::optional<QRegion>& region) {
    const auto x = x11::connection();
    if (!x) {
        return;
    }
    const auto id = static_cast<xcb_window_t>(window.winId());
    const xcb_atom_t property = x11::atom(*x, "_KDE_NET_WM_BLUR_BEHIND_REGION");
    if (!region || region->isEmpty()) {
        xcb_delete_property(x->xcb, id, property);
        xcb_flush(x->xcb);
        return;
    }
    // x, y, width, height for every rectangle; an empty list would mean the whole window.
    std::vector<std::uint32_t> values;
    for (const QRect& rect : *region) {
        values.insert(values.end(),
                      {static_cast<std::uint32_t>(rect.x()), static_cast<std::uint32_t>(rect.y()),
                       static_cast<std::uint32_t>(rect.width()),
                       static_cast<std::uint32_t>(rect.height())});
    }
    xcb_change_property(x->xcb, XCB_PROP_MODE_REPLACE, id, property, XCB_ATOM_CARDINAL, 32,
                        static_cast<std::uint32_t>(values.size()), values.data());
    xcb_flush(x->xcb);
}

} // namespace kelo::shell
