// SPDX-License-Identifier: MIT
#pragma once

#include <fcntl.h>
#include <poll.h>
#include <sys/prctl.h>
#include <sys/wait.h>
#include <unistd.h>

#include <csignal>
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

namespace VexmoraSDK {

/// A running program and what it prints. It is killed if the process that started it ends.
class Program {
 public:
    explicit Program(std::vector<std::string> command) {
        std::vector<char*> arguments;
        for (std::string& argument : command)
            arguments.push_back(argument.data());
        arguments.push_back(nullptr);
        int ends[2];
        if (pipe2(ends, O_CLOEXEC) != 0) throw std::runtime_error("no pipe");
        id_ = fork();
        if (id_ == 0) {
            prctl(PR_SET_PDEATHSIG, SIGKILL);
            dup2(ends[1], STDOUT_FILENO);
            dup2(ends[1], STDERR_FILENO);
            execvp(arguments[0], arguments.data());
            _exit(127);
        }
        close(ends[1]);
        output_ = ends[0];
    }

    ~Program() {
        if (id_ > 0) end();
        close(output_);
    }

    Program(const Program&) = delete;
    Program& operator=(const Program&) = delete;

    /// Reads up to the end of the line that contains `wanted`, or to the end of the output.
    std::string readTo(const std::string& wanted) {
        for (;;) {
            const std::size_t found = printed_.find(wanted);
            const std::size_t end = found == std::string::npos ? found : printed_.find('\n', found);
            if (end != std::string::npos || !readMore()) {
                std::string part = printed_.substr(0, end);
                printed_.erase(0, end);
                return part;
            }
        }
    }

    std::string readAll() {
        while (readMore()) {
        }
        return std::exchange(printed_, {});
    }

    /// Reads the rest of the next line that contains `label`, from behind the label on.
    std::string readLabelled(const std::string& label) {
        const std::string text = readTo(label);
        const std::size_t found = text.rfind(label);
        if (found == std::string::npos) throw std::runtime_error("not in the output: " + label);
        return text.substr(found + label.size());
    }

    /// Ignores all further output, so that the program never waits for somebody to read it.
    void stopReading() { close(std::exchange(output_, -1)); }

    /// Sends SIGTERM and returns the exit status.
    int end() {
        kill(id_, SIGTERM);
        return wait();
    }

    int wait() {
        int status = 0;
        waitpid(std::exchange(id_, 0), &status, 0);
        return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
    }

 private:
    bool readMore() {
        pollfd more{output_, POLLIN, 0};
        if (poll(&more, 1, 60'000) != 1) return false;
        char buffer[4096];
        const ssize_t size = read(output_, buffer, sizeof buffer);
        if (size > 0) printed_.append(buffer, static_cast<std::size_t>(size));
        return size > 0;
    }

    pid_t id_ = 0;
    int output_ = -1;
    std::string printed_;
};

}  // namespace VexmoraSDK
