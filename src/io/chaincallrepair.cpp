#include "io/chaincallrepair.h"

namespace
{
bool isSpace(char c)
{
    return c == ' ' || c == '\t' || c == '\n' || c == '\r' || c == '\f' || c == '\v';
}

bool isDigit(char c)
{
    return c >= '0' && c <= '9';
}

// Matches a literal at *at and moves past it.
bool literal(std::string_view text, size_t* at, std::string_view expected)
{
    if (text.substr(*at, expected.size()) != expected)
        return false;
    *at += expected.size();
    return true;
}

void skipSpace(std::string_view text, size_t* at)
{
    while (*at < text.size() && isSpace(text[*at]))
        ++*at;
}

// The argument of a Set( ... ); call: everything up to the first ')'.
bool setArgument(std::string_view text, size_t* at, std::string_view prefix, std::string_view* argument)
{
    if (!literal(text, at, prefix))
        return false;
    const size_t close = text.find(')', *at);
    if (close == std::string_view::npos)
        return false;
    *argument = text.substr(*at, close - *at);
    *at = close;
    return literal(text, at, ");");
}

bool matchAt(std::string_view text, size_t begin, ChainCall* call)
{
    size_t at = begin;
    if (!literal(text, &at, "shape.CreateChain(vs, "))
        return false;
    const size_t digits = at;
    while (at < text.size() && isDigit(text[at]))
        ++at;
    if (at == digits)
        return false;
    call->count = text.substr(digits, at - digits);
    if (!literal(text, &at, ");"))
        return false;
    skipSpace(text, &at);
    if (!setArgument(text, &at, "shape.m_prevVertex.Set(", &call->previous))
        return false;
    skipSpace(text, &at);
    if (!setArgument(text, &at, "shape.m_nextVertex.Set(", &call->next))
        return false;
    call->begin = begin;
    call->end = at;
    return true;
}
} // namespace

bool findChainCall(std::string_view text, size_t from, ChainCall* call)
{
    for (size_t at = text.find("shape.CreateChain(", from); at != std::string_view::npos;
         at = text.find("shape.CreateChain(", at + 1)) {
        if (matchAt(text, at, call))
            return true;
    }
    return false;
}
