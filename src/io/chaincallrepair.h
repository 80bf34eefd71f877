#pragma once

#include <cstddef>
#include <string_view>

// Box2D 2.4.1 dumps a chain as
//     shape.CreateChain(vs, N);
//     shape.m_prevVertex.Set(P);
//     shape.m_nextVertex.Set(Q);
// but 2.4.1 has no two-argument CreateChain: the neighbour vertices are
// arguments. The dump is rewritten to
//     shape.CreateChain(vs, N, b2Vec2(P), b2Vec2(Q));
// so that the source compiles. The rewrite works on the bytes in one pass.

/// One chain call found in a dump: where it starts and ends, and its parts.
struct ChainCall
{
    size_t begin = 0;
    size_t end = 0;
    std::string_view count;
    std::string_view previous;
    std::string_view next;
};

/// Finds the next complete chain call at or after from; false when none is left.
bool findChainCall(std::string_view text, size_t from, ChainCall* call);

/// Writes the dump with every chain call rewritten, piece by piece, through
/// write(const char* data, size_t length).
template <typename Write>
void repairChainCalls(std::string_view dump, Write write)
{
    size_t done = 0;
    ChainCall call;
    while (findChainCall(dump, done, &call)) {
        write(dump.data() + done, call.begin - done);
        const std::string_view parts[] = {"shape.CreateChain(vs, ", call.count, ", b2Vec2(", call.previous,
                                          "), b2Vec2(", call.next, "));"};
        for (std::string_view part : parts)
            write(part.data(), part.size());
        done = call.end;
    }
    write(dump.data() + done, dump.size() - done);
}
