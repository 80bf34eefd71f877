// Runs a program and writes the peak resident memory of that program alone,
// in kilobytes, to a file, with its system time in seconds on a second line:
// peak_memory RESULT PROGRAM [ARGUMENTS...].
//
// A process forked from a large one carries the large one's resident size
// into its own peak (Linux keeps the high-water mark across exec), so the
// benchmark, which holds a big scene itself, starts its programs through this
// small one; its exit code is the program's.
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cstdio>

int main(int argc, char* argv[])
{
    if (argc < 3) {
        std::fprintf(stderr, "usage: %s RESULT PROGRAM [ARGUMENTS...]\n", argv[0]);
        return 2;
    }
    const pid_t pid = fork();
    if (pid == 0) {
        execv(argv[2], argv + 2);
        _exit(127);
    }
    int status = 0;
    rusage usage{};
    if (pid < 0 || wait4(pid, &status, 0, &usage) != pid)
        return 2;
    std::FILE* result = std::fopen(argv[1], "w");
    if (!result)
        return 2;
    std::fprintf(result, "%ld\n%.6f\n", usage.ru_maxrss,
                 double(usage.ru_stime.tv_sec) + double(usage.ru_stime.tv_usec) / 1e6);
    std::fclose(result);
    return WIFEXITED(status) ? WEXITSTATUS(status) : 2;
}
