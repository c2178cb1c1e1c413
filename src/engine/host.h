#pragma once

namespace quorvex::engine {

// What a long calculation needs of the program around it: whether the user asked to stop, a
// moment for the interface to stay alive, and a refresh of the variable list. A calculation
// without a host simply runs to its end.
class Host {
public:
    virtual ~Host() = default;
    virtual bool aborted() const { return false; }
    virtual void pump() {}
    virtual void refresh() {}
    // How far a calculation has come: `done` steps of `total`, or of an unknown number when
    // `total` is 0 (the outer points of a double or triple integral).
    virtual void progress(long /*done*/, long /*total*/) {}
};

} // namespace quorvex::engine
