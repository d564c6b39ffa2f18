#include "commands.h"
#include "data_file_lock.h"
#include "forward_add.h"
#include "json_io.h"
#include "quick_parse.h"
#include "todo_store.h"

namespace kelo::cli {

int runAdd(const Invocation& invocation, std::istream& in, std::ostream& out) {
    // A running Kelo rewrites the whole file after every change and would drop what is added
    // behind its back, so its lock is taken before the store is opened; while Kelo holds it, the
    // lines go to Kelo instead. A lock that cannot be had for another reason (a folder that cannot
    // be created) is left to the store, which logs why it cannot save.
    const DataFileLock lock(invocation.file);
    if (lock.status() == DataFileLock::Status::heldByOther) {
        return forwardAdd(invocation, in, out);
    }
    TodoStore store(invocation.file);
    store.writeBackup();
    const Bucket bucket = invocation.bucket.value_or(Bucket::today);
    bool saved = true;
    answerLines(
        in, out,
        [&](const Json& input) -> Answer {
            if (!input.is_string()) {
                return LineError{"expected a JSON string"};
            }
            const Parsed plan = QuickParse::plan(input.get_ref<const std::string&>(), bucket,
                                                 invocation.now, invocation.calendar);
            const auto added = store.add(plan.title, plan.day, plan.minute);
            if (const auto& error = store.saveError()) {
                // The task lives only in this process, which ends here: a later line must not carry
                // it into the file after it was answered as failed.
                saved = false;
                return LineError{"could not save " + invocation.file.string() + ": " + *error};
            }
            return added ? taskObject(*added) : Json(nullptr);
        },
        [&] { return saved; });
    return saved ? 0 : 1;
}

} // namespace kelo::cli
