// A program on the library ends promptly and with its own exit status,
// whether it stopped the library first or not, and also when exit() comes
// from another thread while the hot-plug thread is busy. The program is a
// C application of its own (VELATRIX_EXIT_PROBE), as static destruction at
// exit is the thing under test.
#include <gtest/gtest.h>

#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <string>

extern char** environ;

namespace {

struct Ending {
    std::string status;  // "exited 0", "killed by signal 14", ...
    std::string output;
};

Ending run_probe(const char* mode) {
    int fds[2];
    if (pipe(fds) != 0) return {"no pipe", ""};
    posix_spawn_file_actions_t actions;
    posix_spawn_file_actions_init(&actions);
    posix_spawn_file_actions_adddup2(&actions, fds[1], STDOUT_FILENO);
    posix_spawn_file_actions_addclose(&actions, fds[0]);
    posix_spawn_file_actions_addclose(&actions, fds[1]);
    char* argv[] = {const_cast<char*>(VELATRIX_EXIT_PROBE), const_cast<char*>(mode), nullptr};
    pid_t pid = 0;
    const int error = posix_spawn(&pid, VELATRIX_EXIT_PROBE, &actions, nullptr, argv, environ);
    posix_spawn_file_actions_destroy(&actions);
    close(fds[1]);
    Ending ending;
    char buffer[256];
    for (ssize_t length; (length = read(fds[0], buffer, sizeof buffer)) > 0;) ending.output.append(buffer, length);
    close(fds[0]);
    if (error != 0) return {"not started", ""};
    int status = 0;
    waitpid(pid, &status, 0);
    // The probe arms an alarm: a hang at exit ends as signal 14.
    ending.status = WIFEXITED(status) ? "exited " + std::to_string(WEXITSTATUS(status))
                                      : "killed by signal " + std::to_string(WTERMSIG(status));
    return ending;
}

TEST(ProcessExit, EndsCleanlyWithOrWithoutDestroy) {
    struct Case {
        const char* mode;
        const char* output;
    };
    const Case cases[] = {
        {"return", "listed 2 pads\n"},
        // destroy has joined the hot-plug thread; thread_wait is then harmless.
        {"destroy", "listed 2 pads\nwait 0\n"},
        {"thread-exit", "listed 2 pads\n"},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.mode);
        const Ending ending = run_probe(c.mode);
        EXPECT_EQ(ending.status, "exited 0");
        EXPECT_EQ(ending.output, c.output);
    }
}

}  // namespace
