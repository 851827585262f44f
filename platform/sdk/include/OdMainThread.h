#pragma once
// Hand-over of work to the main (user-interface) thread, safe to call from any thread.
//
// The host marks its main thread with odSetMainThread() and installs a dispatcher that posts a
// task to its event loop. On the main thread an action runs at once. From another thread it
// goes to the dispatcher, or, while none is installed, to a queue that the main thread drains
// with odRunPendingMainThreadActions().
#include <functional>

using OdMainThreadFunc = void (*)(void* data);

// On the main thread the action runs at once and its exceptions reach the caller. From a
// worker, nonBlocking=false waits until the action has run on the main thread and rethrows
// what it threw; nonBlocking=true returns at once and an exception escaping the action is
// dropped on the main thread (nobody waits for it). A blocking hand-over needs the main thread
// to run its loop (or drain the queue); otherwise the worker waits for ever.
void odExecuteMainThreadAction(OdMainThreadFunc func, void* data, bool nonBlocking);
void odExecuteMainThreadAction(std::function<void()> action, bool nonBlocking);

// Marks the calling thread as the main thread. Until it is called, the thread that loaded the
// SDK library counts as the main thread.
void odSetMainThread();
bool odIsMainThread();

// The host's dispatcher: it must run the task later on the main thread. An empty function
// uninstalls it (tasks are queued again).
void odSetMainThreadDispatcher(std::function<void(std::function<void()>)> dispatcher);
// Runs the queued actions; only from the main thread (elsewhere it throws
// OdError(eInvalidContext)). Returns how many ran.
int odRunPendingMainThreadActions();
