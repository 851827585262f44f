/* Preloaded into vlib by the kill tests. Counts the changes made to the files whose path
 * begins with VL_KILL_PREFIX (the library and the files beside it): writes, syncs,
 * truncations and deletions. Each is logged to VL_KILL_LOG (when set) as
 * "<number> <call> <path>", and the process kills itself with SIGKILL just before the change
 * numbered VL_KILL_AT, or just after it when VL_KILL_AFTER is set. */
#define _GNU_SOURCE
#include <dlfcn.h>
#include <fcntl.h>
#include <signal.h>
#include <stdio.h>
#include <stdlib.h>
#include <string.h>
#include <sys/types.h>
#include <unistd.h>

static long counter;

static ssize_t realWrite(int fd, const void* buffer, size_t size) {
    static ssize_t (*real)(int, const void*, size_t);
    if (!real)
        real = (ssize_t(*)(int, const void*, size_t))dlsym(RTLD_NEXT, "write");
    return real(fd, buffer, size);
}

static int watched(const char* path) {
    const char* prefix = getenv("VL_KILL_PREFIX");
    return prefix && *prefix && path && strncmp(path, prefix, strlen(prefix)) == 0;
}

static void log_change(long number, const char* call, const char* path) {
    const char* logPath = getenv("VL_KILL_LOG");
    if (!logPath)
        return;
    char line[4200];
    int length = snprintf(line, sizeof line, "%ld %s %s\n", number, call, path);
    int fd = open(logPath, O_WRONLY | O_CREAT | O_APPEND, 0644);
    if (fd < 0)
        return;
    realWrite(fd, line, (size_t)length);
    close(fd);
}

/* Returns the number of the change when `path` is watched, 0 otherwise; kills first when the
 * change is the one to stop before. */
static long before_change(const char* call, const char* path) {
    if (!watched(path))
        return 0;
    long number = ++counter;
    log_change(number, call, path);
    const char* at = getenv("VL_KILL_AT");
    if (at && atol(at) == number && !getenv("VL_KILL_AFTER"))
        kill(getpid(), SIGKILL);
    return number;
}

static void after_change(long number) {
    const char* at = getenv("VL_KILL_AT");
    if (number && at && atol(at) == number && getenv("VL_KILL_AFTER"))
        kill(getpid(), SIGKILL);
}

static long before_fd_change(const char* call, int fd) {
    char link[64], path[4097];
    snprintf(link, sizeof link, "/proc/self/fd/%d", fd);
    ssize_t length = readlink(link, path, sizeof path - 1);
    if (length <= 0)
        return 0;
    path[length] = '\0';
    return before_change(call, path);
}

#define NEXT(function) \
    static __typeof__(function)* real; \
    if (!real) \
        real = (__typeof__(function)*)dlsym(RTLD_NEXT, #function)

ssize_t write(int fd, const void* buffer, size_t size) {
    long number = before_fd_change("write", fd);
    ssize_t result = realWrite(fd, buffer, size);
    after_change(number);
    return result;
}

ssize_t pwrite64(int fd, const void* buffer, size_t size, off64_t offset) {
    NEXT(pwrite64);
    long number = before_fd_change("pwrite", fd);
    ssize_t result = real(fd, buffer, size, offset);
    after_change(number);
    return result;
}

int fdatasync(int fd) {
    NEXT(fdatasync);
    long number = before_fd_change("sync", fd);
    int result = real(fd);
    after_change(number);
    return result;
}

int fsync(int fd) {
    NEXT(fsync);
    long number = before_fd_change("sync", fd);
    int result = real(fd);
    after_change(number);
    return result;
}

int ftruncate64(int fd, off64_t length) {
    NEXT(ftruncate64);
    long number = before_fd_change("truncate", fd);
    int result = real(fd, length);
    after_change(number);
    return result;
}

int unlink(const char* path) {
    NEXT(unlink);
    long number = before_change("unlink", path);
    int result = real(path);
    after_change(number);
    return result;
}
