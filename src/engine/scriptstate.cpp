#include "engine/scriptstate.h"

#include <atomic>

namespace
{
std::atomic<int> s_lineOffset{-1};
std::atomic<int> s_scriptOutputFlag{0};
std::atomic<AngelScript::asIScriptContext*> s_currentContext{nullptr};
std::atomic<bool> s_abortRequested{false};
} // namespace

namespace ScriptState
{
int lineOffset() { return s_lineOffset; }
void setLineOffset(int offset) { s_lineOffset = offset; }
int scriptOutputFlag() { return s_scriptOutputFlag; }
void setScriptOutputFlag(int flag) { s_scriptOutputFlag = flag; }

QRecursiveMutex& executionMutex()
{
    static QRecursiveMutex s_executionMutex;
    return s_executionMutex;
}

AngelScript::asIScriptContext* currentContext() { return s_currentContext; }
void setCurrentContext(AngelScript::asIScriptContext* context) { s_currentContext = context; }
void requestAbort() { s_abortRequested = true; }
void clearAbortRequest() { s_abortRequested = false; }
bool isAbortRequested() { return s_abortRequested; }
} // namespace ScriptState
