// Where the copies of running and of crashed sessions lie: in the program folder, "session-4711.copy" of the
// program with the process number 4711, beside "session-4711.lock", which that program holds locked as long
// as it lives. The system takes the lock back when the program ends in whatever way; a copy without a holder
// was left behind.
#pragma once
#include <optional>
#include <string>

#include "base/descriptor.h"
#include "session/recovery.h"

namespace quom {

// A lock file that this program holds until the end of the value's life.
struct HeldLock {
    Descriptor file;
    std::string path;
    bool good() const { return file.good(); }
};

// The place of this program's copy.
class RecoveryPlace {
 public:
    // Takes a place in the folder that nobody has; none where there is no folder or it cannot be written.
    explicit RecoveryPlace(const std::string& folder);
    ~RecoveryPlace();  // the place is given back; a copy stays
    bool good() const { return lock_.good(); }
    const std::string& path() const { return path_; }
    // Replaces the copy, at once and whole; returns the fault.
    std::string write(const SessionCopy& copy) const;
    // Removes it: the program ends as it should.
    void remove() const;

 private:
    HeldLock lock_;
    std::string path_;
};

// A copy that was left behind; while this value lives, no other program takes it.
struct LeftCopy {
    std::string path;
    HeldLock lock;
    void remove() const;  // copy and lock file
};
// The newest in the folder; none when there is no left copy.
std::optional<LeftCopy> take_left_copy(const std::string& folder);

// Offers what was left behind, the newest first, until one is loaded: Yes makes the session what it was, No
// deletes it. One that cannot be read is told and put aside as "....unreadable". True: the session was
// loaded; own has a copy of it before the left one goes.
bool offer_left_copies(Session& session, const RecoveryPlace& own, const std::string& folder,
                       Messages& messages);

}  // namespace quom
