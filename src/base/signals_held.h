// Signals wait while something is done that must not be cut in two.
#pragma once
#include <pthread.h>

#include <csignal>

namespace quom {

// Holds back all signals to this thread as long as it lives. Threads that are started meanwhile never get
// any.
class SignalsHeld {
 public:
    SignalsHeld() {
        sigset_t all;
        sigfillset(&all);
        pthread_sigmask(SIG_BLOCK, &all, &before_);
    }
    ~SignalsHeld() { pthread_sigmask(SIG_SETMASK, &before_, nullptr); }
    SignalsHeld(const SignalsHeld&) = delete;
    SignalsHeld& operator=(const SignalsHeld&) = delete;

 private:
    sigset_t before_{};
};

}  // namespace quom
