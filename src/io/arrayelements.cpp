#include "io/arrayelements.h"

#include "io/jsontextwriter.h"

#include <QThread>

#include <array>
#include <condition_variable>
#include <mutex>
#include <numeric>
#include <optional>
#include <string>
#include <thread>
#include <vector>

namespace
{
// An output stream into a string that keeps its memory between runs.
struct StringOutput
{
    using Ch = char;
    void Put(char c) { text.push_back(c); }
    void write(const char* data, size_t length) { text.append(data, length); }
    void Flush() {}
    std::string text;
};

// A run of elements written apart, going on from the sink's layout.
class Piece
{
public:
    void start(const JsonTextLayout& from, size_t elementsBefore)
    {
        m_out.text.clear();
        JsonTextLayout layout = from;
        layout.levels.back().count = elementsBefore;
        m_sink.reset();
        m_writer.emplace(m_out, layout);
        m_sink.emplace(*m_writer);
    }
    JsonSink& sink() { return *m_sink; }
    JsonTextRun run(size_t elements)
    {
        m_end = m_writer->layout();
        return {m_out.text, &m_end, elements, m_sink->ok()};
    }

private:
    StringOutput m_out;
    std::optional<JsonTextWriter<StringOutput>> m_writer;
    std::optional<HandlerSink<JsonTextWriter<StringOutput>>> m_sink;
    JsonTextLayout m_end;
};
} // namespace

void writeArrayElements(JsonSink& sink, size_t count, const std::function<void(JsonSink&, size_t)>& write,
                        size_t run)
{
    JsonTextLayout layout;
    const bool apart = run > 0 && count > run && QThread::idealThreadCount() > 1 && sink.textLayout(&layout) &&
                       !layout.levels.empty() && layout.levels.back().array && !layout.afterKey;
    if (!apart) {
        for (size_t i = 0; i < count; ++i)
            write(sink, i);
        return;
    }
    // The runs are taken in order by whichever thread is free. This thread
    // writes the run due next straight into the sink when nobody has taken
    // it, and appends runs written apart as they become due; while the run
    // due is still being written by the helper, it writes a later run apart.
    // A few pieces bound the memory held by runs written ahead.
    const size_t runs = (count + run - 1) / run;
    const size_t before = layout.levels.back().count;
    const auto writeRun = [&](JsonSink& to, size_t r) {
        for (size_t i = r * run, end = std::min(count, i + run); i < end; ++i)
            write(to, i);
    };
    constexpr size_t kPieces = 4;
    std::array<Piece, kPieces> pieces;
    std::vector<size_t> freePieces(kPieces);
    std::iota(freePieces.begin(), freePieces.end(), size_t(0));
    std::vector<size_t> pieceOf(runs, kPieces); // kPieces: not written apart (yet)
    std::mutex mutex;
    std::condition_variable changed;
    size_t next = 0; // the first run nobody has taken
    // Takes the next run and writes it into a free piece; the lock is held on entry and on return.
    const auto writeApart = [&](std::unique_lock<std::mutex>& lock) {
        const size_t r = next++;
        const size_t piece = freePieces.back();
        freePieces.pop_back();
        lock.unlock();
        pieces[piece].start(layout, before + r * run);
        writeRun(pieces[piece].sink(), r);
        lock.lock();
        pieceOf[r] = piece;
        changed.notify_all();
    };
    std::thread helper([&] {
        std::unique_lock lock(mutex);
        for (;;) {
            changed.wait(lock, [&] { return next >= runs || !freePieces.empty(); });
            if (next >= runs)
                return;
            writeApart(lock);
        }
    });
    std::unique_lock lock(mutex);
    for (size_t due = 0; due < runs;) {
        if (pieceOf[due] < kPieces) {
            const size_t piece = pieceOf[due];
            lock.unlock();
            sink.appendText(pieces[piece].run(std::min(count, (due + 1) * run) - due * run));
            lock.lock();
            freePieces.push_back(piece);
            ++due;
            changed.notify_all();
        } else if (next == due) {
            ++next;
            lock.unlock();
            writeRun(sink, due);
            lock.lock();
            ++due;
        } else if (next < runs && !freePieces.empty()) {
            writeApart(lock);
        } else {
            changed.wait(lock);
        }
    }
    lock.unlock();
    helper.join();
}
