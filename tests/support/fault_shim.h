// Makes the n-th call of a function of the system fail, to see what programs do then. A program that is
// linked with the library fault_shim sets it by make_fail; any other one is started with
//     LD_PRELOAD=libfault_shim.so QUOM_FAULT="write 3 28" QUOM_FAULT_MET=FILE
// which lets its third write end with errno 28 and makes FILE when it came to that.
#pragma once

// call: read, pread, write, fsync, rename, open, close, thread (pthread_create), new (operator new, throws).
// n: from 1, counted from the beginning of main; 0 turns it off. code: errno; 0 lets read and write handle
// half of the bytes. threads fail from the n-th on.
extern "C" void make_fail(const char* call, long n, int code);
// True when the call was met since make_fail.
extern "C" bool fault_met();
