#pragma once
// Runs a command in-process with temporary files for its terminal and keeps what it printed.

#include <cstdio>
#include <functional>
#include <string>

struct CapturedRun {
    int Run(const std::function<int(std::FILE* out, std::FILE* err)>& command)
    {
        std::FILE* out = std::tmpfile();
        std::FILE* err = std::tmpfile();
        const int code = command(out, err);
        Out = Contents(out);
        Err = Contents(err);
        std::fclose(out);
        std::fclose(err);
        return code;
    }

    std::string Out;
    std::string Err;

private:
    static std::string Contents(std::FILE* file)
    {
        std::string text;
        std::rewind(file);
        char buffer[4096];
        for (size_t read; (read = std::fread(buffer, 1, sizeof buffer, file)) > 0;)
            text.append(buffer, read);
        return text;
    }
};
