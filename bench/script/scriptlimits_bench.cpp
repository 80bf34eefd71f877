// Costs of the runaway-script limits: how fast endless recursion is stopped,
// deep (but allowed) recursion, the per-run overhead of a small script, and
// allocation churn with the memory budget counting every block.
#include "bench.h"

#include "document/editordocument.h"
#include "engine/documentscripting.h"
#include "engine/scriptexecution.h"
#include "engine/scriptlimits.h"

#include <cstdio>

namespace
{
const char* endText(ScriptRunOutcome outcome)
{
    switch (outcome.end) {
    case ScriptRunEnd::Finished: return "finished";
    case ScriptRunEnd::Exception: return "exception";
    case ScriptRunEnd::Failed: return "failed";
    case ScriptRunEnd::NotRun: return "not run";
    case ScriptRunEnd::Aborted: break;
    }
    switch (outcome.abortReason) {
    case ScriptAbortReason::StackLimit: return "aborted at the stack limit";
    case ScriptAbortReason::MemoryLimit: return "aborted at the memory limit";
    case ScriptAbortReason::TimeLimit: return "aborted at the time limit";
    default: return "aborted";
    }
}

void timeRun(EditorDocument& document, const char* what, const QString& text)
{
    const double seconds = timeSeconds([&] { document.scripting().runOneShot(text, QString()); });
    std::printf("  %s: %.3f s, %s\n", what, seconds, endText(lastScriptRunOutcome(&document)));
}

const bool s_recursion = registerBench("script/recursion", [] {
    EditorDocument document;
    const ScriptLimits limits = ScriptLimits::current();
    std::printf("  call depth limit %d\n", limits.callDepth);
    timeRun(document, "endless recursion", QStringLiteral("void f() { f(); }\nvoid main() { f(); }"));
    const int depth = limits.callDepth > 0 ? limits.callDepth - 100 : 80000;
    timeRun(document, qPrintable(QStringLiteral("five descents to depth %1").arg(depth)),
            QStringLiteral("int d(int n) { return n == 0 ? 0 : 1 + d(n - 1); }\n"
                           "void main() { for (int i = 0; i < 5; i++) d(%1); }")
                .arg(depth));
});

const bool s_overhead = registerBench("script/small-runs", [] {
    EditorDocument document;
    constexpr int kRuns = 2000;
    const double seconds = timeSeconds([&] {
        for (int i = 0; i < kRuns; ++i)
            document.scripting().runOneShot(QStringLiteral("int x = 1;"), QString());
    });
    std::printf("  %d one-shot runs: %.3f s, %.1f us per run\n", kRuns, seconds, seconds * 1e6 / kRuns);
});

const bool s_churn = registerBench("script/allocation-churn", [] {
    EditorDocument document;
    timeRun(document, "500,000 arrays of 16 ints created and dropped",
            QStringLiteral("void main() { int s = 0; for (int i = 0; i < 500000; i++) { array<int> a(16); "
                           "s += a.length(); } }"));
    timeRun(document, "array of arrays grown to 20,000 entries of 16 ints",
            QStringLiteral("void main() { array<array<int>> a; for (int i = 0; i < 20000; i++) "
                           "a.insertLast(array<int>(16)); }"));
});
} // namespace
