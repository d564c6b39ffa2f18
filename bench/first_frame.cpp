// For the whole-process figures: starts a program and prints the milliseconds until the screen
// pixel at <x>,<y> turns black (the island drawn over a white root), then the program's id.
//   first_frame <x> <y> <program>...
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <memory>
#include <thread>
#include <unistd.h>
#include <xcb/xcb.h>

namespace {

bool isBlack(xcb_connection_t* xcb, xcb_window_t root, std::int16_t x, std::int16_t y) {
    const auto cookie = xcb_get_image(xcb, XCB_IMAGE_FORMAT_Z_PIXMAP, root, x, y, 1, 1, 0x00FFFFFF);
    const std::unique_ptr<xcb_get_image_reply_t, decltype(&std::free)> reply(
        xcb_get_image_reply(xcb, cookie, nullptr), &std::free);
    if (!reply || xcb_get_image_data_length(reply.get()) < 3) {
        return false;
    }
    const std::uint8_t* pixel = xcb_get_image_data(reply.get());
    return pixel[0] == 0 && pixel[1] == 0 && pixel[2] == 0;
}

} // namespace

int main(int argc, char** argv) {
    xcb_connection_t* xcb = xcb_connect(nullptr, nullptr);
    if (argc < 4 || xcb_connection_has_error(xcb)) {
        std::fprintf(stderr, "usage, with an X display: first_frame <x> <y> <program>...\n");
        return 2;
    }
    const xcb_window_t root = xcb_setup_roots_iterator(xcb_get_setup(xcb)).data->root;
    const auto x = static_cast<std::int16_t>(std::atoi(argv[1]));
    const auto y = static_cast<std::int16_t>(std::atoi(argv[2]));
    if (isBlack(xcb, root, x, y)) {
        std::fprintf(stderr, "first_frame: the probe pixel is black before the start\n");
        return 2;
    }
    const auto start = std::chrono::steady_clock::now();
    const pid_t child = fork();
    if (child == 0) {
        // The figures are this probe's only output; the program's own goes nowhere, and must
        // not hold the probe's output open after the probe is done.
        std::freopen("/dev/null", "w", stdout);
        std::freopen("/dev/null", "w", stderr);
        execvp(argv[3], argv + 3);
        _exit(127);
    }
    const auto deadline = start + std::chrono::seconds(20);
    while (!isBlack(xcb, root, x, y)) {
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
