// Memory that runs out while files become rows: a box names the file, and the store is what it was. Each allocation of the main thread
// fails in turn, once, until a load needs no more of them.
#include <cstdlib>
#include <new>

#include "base/os.hpp"
#include "patterns/prf_files.hpp"
#include "session/load.hpp"
#include "session/session.hpp"
#include "session/testing.hpp"

namespace {

thread_local long long allocations_left = -1;  // the one that counts down to 0 fails; below 0 none does

}  // namespace

[[gnu::noinline]] void* operator new(std::size_t size, const std::nothrow_t&) noexcept {
    return allocations_left >= 0 && allocations_left-- == 0 ? nullptr : std::malloc(size == 0 ? 1 : size);
}
[[gnu::noinline]] void* operator new(std::size_t size) {
    if (void* const memory = operator new(size, std::nothrow)) return memory;
    throw std::bad_alloc();
}
[[gnu::noinline]] void operator delete(void* memory) noexcept { std::free(memory); }
[[gnu::noinline]] void operator delete(void* memory, std::size_t) noexcept { std::free(memory); }
[[gnu::noinline]] void operator delete(void* memory, const std::nothrow_t&) noexcept { std::free(memory); }

namespace vntl {
namespace {

// The allocations of the load alone fail: not those of who asks.
class Failing_Progress : public Progress {
public:
    explicit Failing_Progress(long long which) : which_(which) {}
    ~Failing_Progress() override { allocations_left = -1; }
    void Wait(const std::function<bool(std::chrono::milliseconds)>& ready_within) override {
        Progress::Wait(ready_within);
        if (which_ >= 0) allocations_left = std::exchange(which_, -1);
    }

private:
    long long which_;
};

class Failing_Ask : public Scripted_Ask {
public:
    explicit Failing_Ask(long long which) : which_(which) {}
    Box_Answer Box(const Message_Box& box) override {
        const long long left = std::exchange(allocations_left, -1);
        const Box_Answer given = Scripted_Ask::Box(box);
        failed = failed || left < 0;
        return given;
    }
    std::unique_ptr<Progress> Start_Progress(std::string_view, int) override { return std::make_unique<Failing_Progress>(which_); }
    bool failed = false;

private:
    long long which_;
};

TEST(Load_Memory, EveryAllocationMayFail) {
    const Test_Directory dir;
    std::string text = "title\n", fall;
    for (int i = 0; i < 40; ++i) text += std::to_string(10 + i) + ".0 " + std::to_string(100 + i) + " 1.0\n";
    fall = text + "12 5 1\n60 5 1\n61 5 1\n";
    const std::string plain = dir.Write("plain.xye", text), falling = dir.Write("falling.xye", fall + "60.5 nan 1\n62 5 1\n63 5 1\n");
    const std::string refined = dir.Write("refined.prf", test::Whole(test::Columns(test::Make_Model(1, 3, false))));
    for (const std::string& file : {plain, falling, refined})
        for (const int rows : {0, 8}) {
            int failures = 0;
            for (long long which = 0; which < 4000; ++which) {
                Session session;
                for (int row = 0; row < rows; ++row) session.store.Append(Tiny_Pattern(), {});
                if (rows > 0) session.plot.xspace = X_Space::two_theta;
                Failing_Ask ask(which);
                ask.answer = Box_Answer::yes;
                const Open_Result result = Open_Files(session, ask, {file});
                EXPECT_TRUE(Check_Invariants(session).ok()) << which << Check_Invariants(session).message;
                if (!result.failed) {
                    EXPECT_EQ(session.store.nperfiles(), rows + 1);
                    if (!ask.failed && failures > 0) break;
                    continue;
                }
                ++failures;
                EXPECT_EQ(ask.Last_Box(),
                          "Error Message|ERROR in file: " + std::string(File_Part(file)) + "\nThere is not enough memory to read it")
                    << which;
                EXPECT_EQ(session.store.nperfiles(), rows) << which;
                EXPECT_EQ(session.recent.Slot(1), "-") << which;
                EXPECT_EQ(session.plot.xspace, rows > 0 ? X_Space::two_theta : X_Space::none);
            }
            EXPECT_GT(failures, 5) << file;
        }
}

}  // namespace
}  // namespace vntl
