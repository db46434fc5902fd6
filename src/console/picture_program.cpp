#include "console/picture_program.h"

#include <fcntl.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <csignal>
#include <cstdlib>
#include <cstring>
#include <vector>

#include "base/code_page.h"
#include "base/files.h"
#include "base/number_text.h"
#include "base/output_file.h"
#include "session/program_path.h"

namespace quom {
namespace {

constexpr std::string_view pictures[] = {"svg", "pdf", "png", "emf", "wmf", "bmp"};
constexpr std::size_t LongestSentence = 4096;

Fault failed(std::string sentence) { return {status_file, std::move(sentence)}; }

bool is_program(const std::string& path) { return ::access(path.c_str(), X_OK) == 0; }

// quom beside this program; in a build tree in its own folder. Empty: there is none.
std::string picture_program() {
    const std::string folder = program_places({}).executable;
    for (const char* place : {"quom", "../ui/quom"}) {
        std::string path = join_path(folder, place);
        if (!folder.empty() && is_program(path) && FileExists(path, {})) return path;
    }
    return {};
}

std::string temporary_folder() {
    const char* const named = std::getenv("TMPDIR");
    return named != nullptr && *named != '\0' ? named : "/tmp";
}

// Files and signals of the program that is started: what it says comes through the pipe, and signals that are
// ignored here have their own action again.
class SpawnSetup {
 public:
    explicit SpawnSetup(int into) {
        posix_spawn_file_actions_init(&actions);
        posix_spawn_file_actions_addopen(&actions, STDIN_FILENO, "/dev/null", O_RDONLY, 0);
        posix_spawn_file_actions_adddup2(&actions, into, STDOUT_FILENO);
        posix_spawn_file_actions_adddup2(&actions, into, STDERR_FILENO);
        posix_spawnattr_init(&attributes);
        sigset_t own;
        sigemptyset(&own);
        for (const int signal : {SIGPIPE, SIGXFSZ}) sigaddset(&own, signal);
        posix_spawnattr_setsigdefault(&attributes, &own);
        posix_spawnattr_setflags(&attributes, POSIX_SPAWN_SETSIGDEF);
    }
    ~SpawnSetup() {
        posix_spawn_file_actions_destroy(&actions);
        posix_spawnattr_destroy(&attributes);
    }
    SpawnSetup(const SpawnSetup&) = delete;
    SpawnSetup& operator=(const SpawnSetup&) = delete;
    posix_spawn_file_actions_t actions{};
    posix_spawnattr_t attributes{};
};

// All that comes through a pipe; the end of a long text is dropped.
std::string read_all(int from) {
    std::string text;
    char part[512];
    for (;;) {
        const ssize_t n = ::read(from, part, sizeof part);
        if (n < 0 && errno == EINTR) continue;
        if (n <= 0) return text;
        const std::size_t room = LongestSentence - std::min(LongestSentence, text.size());
        text.append(part, std::min(room, static_cast<std::size_t>(n)));
    }
}

struct Ended {
    int status = 0;       // as waitpid tells it
    std::string said;     // on its standard output and error
    std::string failure;  // it could not be started
};
Ended run(const std::vector<std::string>& arguments) {
    Ended ended;
    int ends[2] = {-1, -1};
    if (::pipe2(ends, O_CLOEXEC) != 0) return {0, {}, std::strerror(errno)};
    const Descriptor from(ends[0]);
    Descriptor into(ends[1]);
    std::vector<char*> argv;
    argv.reserve(arguments.size() + 1);
    for (const std::string& argument : arguments) argv.push_back(const_cast<char*>(argument.c_str()));
    argv.push_back(nullptr);
    pid_t child = 0;
    {
        const SpawnSetup setup(into.get());
        const int code =
            ::posix_spawn(&child, argv.front(), &setup.actions, &setup.attributes, argv.data(), environ);
        if (code != 0) return {0, {}, std::strerror(code)};
    }
    into.close();
    ended.said = read_all(from.get());
    while (::waitpid(child, &ended.status, 0) < 0) {
        if (errno != EINTR) return {0, {}, std::strerror(errno)};
    }
    return ended;
}

// "quom: It is so." without the name of the program, in one line.
std::string sentence_of(std::string said) {
    if (said.starts_with("quom: ")) said.erase(0, 6);
    std::ranges::replace(said, '\n', ' ');
    return std::string(trim(said));
}

Refused outcome_of(const Ended& ended) {
    if (!ended.failure.empty())
        return failed("The program quom could not be started: " + ended.failure + ".");
    const std::string said = sentence_of(ended.said);
    if (WIFSIGNALED(ended.status))
        return failed("The program quom ended early by signal " + genNum(WTERMSIG(ended.status)) + ".");
    const int status = WEXITSTATUS(ended.status);
    if (status == 0) return {};
    const std::string sentence = said.empty() ? "The program quom drew no picture." : said;
    return Fault{status == status_usage ? status_usage : status_file, sentence};
}

std::optional<double> positive(std::string_view text) {
    const std::optional<double> x = read_number(text);
    return x && *x > 0.0 ? x : std::nullopt;
}

}  // namespace

void add_picture_options(CLI::App& app, PictureArguments& a) {
    constexpr const char* group = "Picture";
    app.add_option("--size", a.size, "Width and height in mm (160x110)")
        ->check([](const std::string& text) {
            const std::size_t x = std::min(text.find_first_of("xX"), text.size());
            const bool good = x < text.size() && positive(text.substr(0, x)) && positive(text.substr(x + 1));
            return good ? std::string() : "\"" + text + "\" is no size in mm; 160x110 is right.";
        })
        ->type_name("WxH")
        ->group(group);
    add_number(app, "--dpi", a.dpi, NumberRange::above_zero, "", "Resolution of PNG and BMP (300)")
        ->group(group);
}

std::string extension_of(std::string_view path) {
    const std::string name = name_part(path);
    const std::size_t point = name.rfind('.');
    if (point == std::string::npos) return {};
    std::string extension = name.substr(point + 1);
    for (char& c : extension)
        if (c >= 'A' && c <= 'Z') c = static_cast<char>(c - 'A' + 'a');
    return extension;
}

bool is_picture(std::string_view extension) {
    return std::ranges::find(pictures, extension) != std::end(pictures);
}

Refused draw_picture(std::string_view bytes, const std::string& path, const PictureArguments& a) {
    const std::string program = picture_program();
    if (program.empty()) return failed("pictures need the program quom beside quomc");
    UnfinishedFile input;
    {
        const Descriptor file = input.create_beside(join_path(temporary_folder(), "quomc-picture"));
        if (!file.good() || !write_all(file.get(), bytes))
            return failed("The folder " + in_quotes(temporary_folder()) +
                          " takes no file for the picture: " + std::strerror(errno) + ".");
    }
    std::vector<std::string> arguments = {program, "--draw", input.name(), "--out", absolute_path(path)};
    if (!a.size.empty()) arguments.insert(arguments.end(), {"--picture-size", a.size});
    if (a.dpi) arguments.insert(arguments.end(), {"--picture-dpi", exactNum(*a.dpi)});
    return outcome_of(run(arguments));
}

}  // namespace quom
