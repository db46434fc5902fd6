#include "support/fault_shim.h"

#include <dlfcn.h>
#include <fcntl.h>
#include <pthread.h>
#include <sys/syscall.h>
#include <unistd.h>

#include <atomic>
#include <cerrno>
#include <cstdarg>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <new>

namespace {

char wanted[16];
std::atomic<long> left;  // calls until the one that fails
int failure;
std::atomic<bool> met;

using Main = int(int, char**, char**);
Main* real_main;
bool begun;  // main has; what is made before it cannot be caught
int counted_main(int argc, char** argv, char** environment) {
    begun = true;
    return real_main(argc, argv, environment);
}

void note_met() {
    met = true;
    const char* const file = std::getenv("QUOM_FAULT_MET");
    if (file == nullptr) return;
    const long fd = ::syscall(SYS_openat, AT_FDCWD, file, O_WRONLY | O_CREAT | O_CLOEXEC, 0666);
    if (fd >= 0) ::syscall(SYS_close, fd);
}

// True for the call that is to fail; with errno.
bool fails_now(const char* call) {
    if (!begun || left <= 0 || std::strcmp(call, wanted) != 0 || --left != 0) return false;
    note_met();
    errno = failure;
    return true;
}

template <typename F>
F* next(const char* name) {
    return reinterpret_cast<F*>(::dlsym(RTLD_NEXT, name));
}

__attribute__((constructor)) void read_environment() {
    const char* const text = std::getenv("QUOM_FAULT");
    char call[16];
    long n = 0;
    int code = 0;
    if (text != nullptr && std::sscanf(text, "%15s %ld %d", call, &n, &code) == 3) make_fail(call, n, code);
}

// Half of the bytes, at least one.
std::size_t half(std::size_t size) { return (size + 1) / 2; }

}  // namespace

extern "C" {

int __libc_start_main(Main* main, int argc, char** argv, void (*init)(), void (*fini)(),
                      void (*loader_fini)(), void* stack_end) {
    using Start = int(Main*, int, char**, void (*)(), void (*)(), void (*)(), void*);
    real_main = main;
    return next<Start>("__libc_start_main")(counted_main, argc, argv, init, fini, loader_fini, stack_end);
}

void make_fail(const char* call, long n, int code) {
    left = 0;
    std::strncpy(wanted, call, sizeof wanted - 1);
    failure = code;
    met = false;
    left = n;
}

bool fault_met() { return met; }

ssize_t read(int fd, void* into, size_t size) {
    static auto* const real = next<ssize_t(int, void*, size_t)>("read");
    if (fails_now("read")) {
        if (failure != 0) return -1;
        size = half(size);
    }
    return real(fd, into, size);
}

ssize_t pread(int fd, void* into, size_t size, off_t at) {
    static auto* const real = next<ssize_t(int, void*, size_t, off_t)>("pread");
    if (fails_now("pread")) {
        if (failure != 0) return -1;
        size = half(size);
    }
    return real(fd, into, size, at);
}

ssize_t write(int fd, const void* bytes, size_t size) {
    static auto* const real = next<ssize_t(int, const void*, size_t)>("write");
    // What goes to standard error is the sentence that is looked for.
    if (fd != STDERR_FILENO && fails_now("write")) {
        if (failure != 0) return -1;
        size = half(size);
    }
    return real(fd, bytes, size);
}

int fsync(int fd) {
    static auto* const real = next<int(int)>("fsync");
    return fails_now("fsync") ? -1 : real(fd);
}

int rename(const char* from, const char* to) {
    static auto* const real = next<int(const char*, const char*)>("rename");
    return fails_now("rename") ? -1 : real(from, to);
}

int open(const char* path, int flags, ...) {
    static auto* const real = next<int(const char*, int, ...)>("open");
    std::va_list more;
    va_start(more, flags);
    const mode_t mode = (flags & O_CREAT) != 0 ? static_cast<mode_t>(va_arg(more, unsigned)) : 0;
    va_end(more);
    return fails_now("open") ? -1 : real(path, flags, mode);
}

int close(int fd) {
    static auto* const real = next<int(int)>("close");
    const bool fails = fails_now("close");
    const int code = errno;
    const int status = real(fd);
    if (!fails) return status;
    errno = code;
    return -1;
}

int pthread_create(pthread_t* thread, const pthread_attr_t* attributes, void* (*body)(void*),
                   void* argument) {
    using Create = int(pthread_t*, const pthread_attr_t*, void* (*)(void*), void*);
    static auto* const real = next<Create>("pthread_create");
    if (!fails_now("thread")) return real(thread, attributes, body, argument);
    left = 1;  // the next one fails too
    return failure;
}
}

void* operator new(std::size_t size) {
    static auto* const real = next<void*(std::size_t)>("_Znwm");
    if (fails_now("new")) throw std::bad_alloc();
    return real(size);
}
