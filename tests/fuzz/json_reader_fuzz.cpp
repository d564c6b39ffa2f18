#include "todo_json.h"

#include <cstdint>
#include <cstdlib>

// Whatever the reader accepts is written back in a form that reads back to the same list and
// the same bytes; and any text at all, as a title or a day, is written so that the file reads.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using namespace kelo;
    const std::string bytes(reinterpret_cast<const char*>(data), size);
    const DecodeResult read = decodeTodos(bytes);
    if (const auto* todos = std::get_if<std::vector<Todo>>(&read)) {
        const std::string written = encodeTodos(*todos);
        const DecodeResult again = decodeTodos(written);
        const auto* back = std::get_if<std::vector<Todo>>(&again);
        if (back == nullptr || *back != *todos || encodeTodos(*back) != written) {
            std::abort();
        }
    }
    Todo todo;
    todo.title = bytes;
    todo.day = bytes;
    if (!std::holds_alternative<std::vector<Todo>>(decodeTodos(encodeTodos({todo})))) {
        std::abort();
    }
    return 0;
}
