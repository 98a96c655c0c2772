// Parallel loops: TMtxForLoop runs a body on a fixed set of worker threads,
// as contiguous ranges, one index at a time from a shared counter, or as a
// while-loop that every worker repeats. Each worker marks itself with the
// controller while a job runs, so that CreateIt inside a body takes objects
// from the worker's own pool, without a lock. DoForLoop and DoWhileLoop run
// a loop to completion on a given or a shared default object.
//
// Bodies. Each kind of body has three forms with a slot of its own:
//   - a plain function (TForLoopFunEvent, ...): a function pointer;
//   - a method (TForLoopEvent, ...): a std::function, typically holding
//     std::bind_front(&T::Method, &object) or a lambda that captures `this`;
//   - a closure (TForLoopAnn, TForLoopRangeAnn): also a std::function, a
//     class of its own so that the free functions can tell it from a method.
// The free functions send a function pointer to the plain-function slot, a
// TForLoopEvent (or TForLoopRangeEvent, TWhileLoopEvent) object to the method
// slot, and any other callable (a lambda, a functor) to the closure slot.
#pragma once

#include <atomic>
#include <cstdint>
#include <functional>
#include <memory>
#include <span>
#include <string>
#include <type_traits>
#include <vector>

#include "rovane/scalars/Scalars.h"

namespace rovane {

class TMtxForLoop;
class TMtxEvent;

// The context of a job: references to objects that every body of the job
// sees; a body casts an element back to the type it knows.
using TLoopContext = std::span<void* const>;

enum TThreadAffinityMode : int32_t { tamDefault, tamSplit2, tamSplit4, tamSplit8 };
enum TEventState : int32_t { esAccepted, esSignaled };
// Thread priorities; on Linux a nice value relative to the thread that
// created the loop object (tpIdle also selects SCHED_IDLE).
enum TThreadPriority : int32_t { tpIdle, tpLowest, tpLower, tpNormal, tpHigher, tpHighest, tpTimeCritical };

// Context given with this High passes the whole span.
inline constexpr int32_t ContextHighAll = -2;

using TForLoopEvent = std::function<void(int32_t LoopIndex, TLoopContext Context, int32_t ThreadIndex)>;
using TForLoopFunEvent = void (*)(int32_t LoopIndex, TLoopContext Context, int32_t ThreadIndex);
using TForLoopRangeEvent =
    std::function<void(int32_t IdxMin, int32_t IdxMax, TLoopContext Context, int32_t ThreadIndex)>;
using TForLoopRangeFunEvent = void (*)(int32_t IdxMin, int32_t IdxMax, TLoopContext Context, int32_t ThreadIndex);
using TWhileLoopEvent = std::function<void(bool& Stop, TLoopContext Context, int32_t ThreadIndex)>;
using TWhileLoopFunEvent = void (*)(bool& Stop, TLoopContext Context, int32_t ThreadIndex);
using TLoopNotifyEvent = std::function<void(TMtxForLoop* Sender)>;

struct TForLoopAnn : std::function<void(int32_t, TLoopContext, int32_t)> {
    using std::function<void(int32_t, TLoopContext, int32_t)>::function;
};
struct TForLoopRangeAnn : std::function<void(int32_t, int32_t, TLoopContext, int32_t)> {
    using std::function<void(int32_t, int32_t, TLoopContext, int32_t)>::function;
};

// Two open arrays a caller can put into a Context; nothing in the loop
// reads them.
class ROVANE_API TParamContext {
public:
    TDoubleArray pd;
    TIntegerArray pi;
};

// A thread that runs OnExecute once, marked with the controller around it.
class ROVANE_API TMtxThreadInternal {
public:
    using TExecuteEvent = std::function<void(TMtxThreadInternal& Thread)>;
    TMtxThreadInternal();
    virtual ~TMtxThreadInternal();
    TMtxThreadInternal(const TMtxThreadInternal&) = delete;
    TMtxThreadInternal& operator=(const TMtxThreadInternal&) = delete;

    TExecuteEvent OnExecute;
    // Starts the thread and returns once it runs (its kernel id is known).
    void Start();
    // Waits for the thread to end.
    void WaitFor() noexcept;
    bool Running() const;
    // Kernel thread id (0 before Start) and the POSIX handle.
    int32_t Tid() const { return fTid.load(std::memory_order_acquire); }
    uint64_t Handle() const;

protected:
    void Execute();
    struct TImpl;
    std::unique_ptr<TImpl> fImpl;
    std::atomic<int32_t> fTid{0};
    std::atomic<uint64_t> fHandle{0};
};

// A thread with a name, a priority and a processor mask.
class ROVANE_API TMtxThread : public TMtxThreadInternal {
public:
    // Linux keeps 15 characters: a long name is cut, keeping `suffix`.
    void SetName(const std::string& name, const std::string& suffix = {});
    // Best effort: a priority above the creator's needs privileges, and
    // without them the thread keeps its present priority.
    void SetPriority(TThreadPriority priority, int32_t baseNice);
    // Bit i of Mask is processor i of the operating system. An empty mask
    // or a refusal raises "SetThreadAffinityMask returned an error!".
    void SetAffinityMask(uint64_t Mask);
    void SetAffinityProcessors(const std::vector<int32_t>& processors);
};

class ROVANE_API TLoopThread : public TMtxThread {
public:
    TLoopThread(TMtxForLoop* owner, int32_t threadIndex);
    ~TLoopThread() override;

    TMtxForLoop* Owner = nullptr;
    // Timer value (steady clock, nanoseconds) at the start of the last job,
    // 0 before any; elapsed seconds of the last job, 0 while it runs.
    int64_t StartTime() const { return fStartTime.load(std::memory_order_relaxed); }
    double StopTime() const { return fStopTime.load(std::memory_order_relaxed); }
    std::vector<void*> Context;
    int32_t ThreadIndex = 0;
    // The pool the worker held in its last job (0: it shared pool 0).
    std::atomic<int32_t> HeapIndex{-1};
    std::atomic<int32_t> LoopIndex{0};
    int32_t Min = 0;
    int32_t Max = -1;
    std::atomic<bool> MessageTrigger{false};
    std::atomic<bool> CancelProcessing{false};

    // The message of the first exception of this job, empty if none.
    std::string ErrorMessage() const;

    // Each flag is the state of its event: Signal sets it (if clear) and
    // wakes the waiters, Reset clears it.
    void SignalStart();
    void ResetStart();
    void SignalIdle();
    void ResetProcessingIdle();
    void SignalProcessingFinished();
    void ResetProcessingFinished();
    bool StartSignaled() const;
    bool ProcessingIdleSignaled() const;
    bool ProcessingFinishSignaled() const;
    void ResetContext();

    TMtxEvent& StartEvent() { return *fStartEvent; }
    TMtxEvent& ProcessingIdleEvent() { return *fIdleEvent; }
    TMtxEvent& FinishEvent() { return *fFinishEvent; }

private:
    friend class TMtxForLoop;
    void RecordError(const char* message);
    void ClearError();
    std::unique_ptr<TMtxEvent> fStartEvent, fIdleEvent, fFinishEvent;
    std::atomic<int64_t> fStartTime{0};
    std::atomic<double> fStopTime{0};
    struct TErrorBox;
    std::unique_ptr<TErrorBox> fError;
};

class ROVANE_API TMtxForLoop {
public:
    // The loop's modes; also reachable as rovane::tmForLoop and so on. The
    // controller has a TThreadingMode of its own, hence the nesting.
    enum TThreadingMode : int32_t { tmForLoop, tmWhileLoop, tmGreedyForLoop };

    TMtxForLoop();
    // Stops the workers (a body in progress finishes first) and joins them.
    ~TMtxForLoop();
    TMtxForLoop(const TMtxForLoop&) = delete;
    TMtxForLoop& operator=(const TMtxForLoop&) = delete;

    // ---- properties ----------------------------------------------------
    TThreadAffinityMode ThreadAffinityMode() const { return FThreadAffinityMode; }
    void SetThreadAffinityMode(TThreadAffinityMode value);
    int32_t Min() const { return FMin; }
    void SetMin(int32_t value) { FMin = value < 0 ? 0 : value; }
    int32_t Max() const { return FMax; }
    void SetMax(int32_t value) { FMax = value; }
    TThreadingMode ThreadingMode() const { return FThreadingMode; }
    void SetThreadingMode(TThreadingMode value) { FThreadingMode = value; }
    int32_t ThreadCount() const { return FThreadCount; }
    // Values below 1 count as 1.
    void SetThreadCount(int32_t value);
    TThreadPriority Priority() const { return FPriority; }
    void SetPriority(TThreadPriority value);
    const std::string& NameOfThreadSet() const { return FNameOfThreadSet; }
    void SetNameOfThreadSet(const std::string& value);

    const TForLoopAnn& OnForLoopAnn() const { return FOnForLoopAnn; }
    void SetOnForLoopAnn(TForLoopAnn value) { FOnForLoopAnn = std::move(value); }
    const TForLoopRangeAnn& OnForLoopRangeAnn() const { return FOnForLoopRangeAnn; }
    void SetOnForLoopRangeAnn(TForLoopRangeAnn value) { FOnForLoopRangeAnn = std::move(value); }
    const TForLoopEvent& OnForLoop() const { return FOnForLoop; }
    void SetOnForLoop(TForLoopEvent value) { FOnForLoop = std::move(value); }
    const TForLoopRangeEvent& OnForLoopRange() const { return FOnForLoopRange; }
    void SetOnForLoopRange(TForLoopRangeEvent value) { FOnForLoopRange = std::move(value); }
    TForLoopFunEvent OnForLoopFun() const { return FOnForLoopFun; }
    void SetOnForLoopFun(TForLoopFunEvent value) { FOnForLoopFun = value; }
    TForLoopRangeFunEvent OnForLoopRangeFun() const { return FOnForLoopRangeFun; }
    void SetOnForLoopRangeFun(TForLoopRangeFunEvent value) { FOnForLoopRangeFun = value; }
    const TWhileLoopEvent& OnWhileLoop() const { return FOnWhileLoop; }
    void SetOnWhileLoop(TWhileLoopEvent value) { FOnWhileLoop = std::move(value); }
    TWhileLoopFunEvent OnWhileLoopFun() const { return FOnWhileLoopFun; }
    void SetOnWhileLoopFun(TWhileLoopFunEvent value) { FOnWhileLoopFun = value; }
    // Kept for the application; no part of a run calls it.
    const TLoopNotifyEvent& OnPrepareProcessing() const { return FOnPrepareProcessing; }
    void SetOnPrepareProcessing(TLoopNotifyEvent value) { FOnPrepareProcessing = std::move(value); }
    // Called between the 20 ms rounds of WaitForProcessingFinish(true): the
    // place for an application's message pump.
    const std::function<void()>& OnProcessMessages() const { return FOnProcessMessages; }
    void SetOnProcessMessages(std::function<void()> value) { FOnProcessMessages = std::move(value); }

    // ---- running -------------------------------------------------------
    void Start();
    // High is the highest index of Context that the bodies see, -1 for
    // none, ContextHighAll for the whole span.
    void Start(TLoopContext Context, int32_t High);
    // Waits until every worker is idle, then clears the contexts.
    void WaitFor();
    // Waits until every worker has finished the job, then clears the
    // contexts; with ProcessMessages, calls OnProcessMessages every 20 ms.
    void WaitForProcessingFinish(bool ProcessMessages);
    bool IsProcessingIdle() const;
    bool IsProcessingFinished() const;
    void CancelProcessing();
    void Stop();
    // A light lock for bodies: the waiting side sleeps until Leave.
    void Enter();
    void Leave();

    // ---- report --------------------------------------------------------
    std::string ErrorMessages() const;
    std::string GetErrorMessage(int32_t ThreadIndex) const;
    bool HasRaisedErrors() const;
    int64_t CombinedLoopCount() const;
    int64_t CombinedLoopIndex() const;
    // Milliseconds of the longest-running worker of the last job.
    double LoopRunningTime() const;
    TLoopThread* GetThread(int32_t i) const;
    void ResetContext();
    void ResetFunctions();

    // Processors [First, Last] (numbers from 0 to Processors - 1) that the
    // affinity mode gives worker ThreadIndex of Threads; empty when Last <
    // First.
    static void AffinityRange(TThreadAffinityMode Mode, int32_t Processors, int32_t Threads, int32_t ThreadIndex,
                              int32_t& First, int32_t& Last);

private:
    friend class TLoopThread;
    friend struct TLoopRunner;
    void DoExecute(TLoopThread& thread);
    void RunJob(TLoopThread& thread);
    void UpdateThreadAffinity(TThreadAffinityMode mode);
    void StopWorkers() noexcept;
    void CreateWorkers(int32_t count);
    void RaiseIfCalledFromBody() const;
    void WaitForFinishFlags(bool processMessages);

    std::vector<std::unique_ptr<TLoopThread>> ThreadList;
    int32_t FMax = 0;
    int32_t FMin = 0;
    int32_t FThreadCount = 0;
    TThreadingMode FThreadingMode = tmForLoop;
    std::atomic<uint8_t> csLock{0};
    std::atomic<bool> Shutdown{false};
    TThreadPriority FPriority = tpNormal;
    std::string FNameOfThreadSet = "MtxForLoop";
    TForLoopEvent FOnForLoop;
    TWhileLoopEvent FOnWhileLoop;
    TLoopNotifyEvent FOnPrepareProcessing;
    TForLoopFunEvent FOnForLoopFun = nullptr;
    TWhileLoopFunEvent FOnWhileLoopFun = nullptr;
    TForLoopRangeEvent FOnForLoopRange;
    TForLoopRangeFunEvent FOnForLoopRangeFun = nullptr;
    // The greedy mode's counter, on a line of its own: every index of a
    // greedy job increments it. 64 bits, so that the increments past Max
    // cannot wrap.
    alignas(64) std::atomic<int64_t> GlobalLoopIndex{-1};
    alignas(64) TThreadAffinityMode FThreadAffinityMode = tamDefault;
    TForLoopRangeAnn FOnForLoopRangeAnn;
    TForLoopAnn FOnForLoopAnn;
    std::function<void()> FOnProcessMessages;
    // The denormal setting of the controller, read at Start on the caller's
    // thread and applied by each worker to itself.
    bool fDenormalsAreZero = false;
    int32_t fBaseNice = 0;
    // Taken by DoForLoop and DoWhileLoop for the length of a run, so that
    // of two callers at the same moment one gets the busy text.
    std::atomic<bool> fRunClaimed{false};
};

inline constexpr TMtxForLoop::TThreadingMode tmForLoop = TMtxForLoop::tmForLoop;
inline constexpr TMtxForLoop::TThreadingMode tmWhileLoop = TMtxForLoop::tmWhileLoop;
inline constexpr TMtxForLoop::TThreadingMode tmGreedyForLoop = TMtxForLoop::tmGreedyForLoop;

// ---- free functions ------------------------------------------------------
// Each runs a job to completion on LoopObject, or on the shared default
// object when it is null, and returns true when a body raised (the texts
// are in ErrorMessages of the object). A busy object raises "Thread object
// is busy computing!". Index bodies run greedily (one index at a time from
// a shared counter), range bodies on contiguous ranges, while bodies until
// each sets Stop or the object is cancelled.
ROVANE_API bool DoForLoop(int32_t Min, int32_t Max, const TForLoopEvent& Body, TMtxForLoop* LoopObject = nullptr,
                          TLoopContext Context = {}, int32_t ContextHigh = ContextHighAll);
ROVANE_API bool DoForLoop(int32_t Min, int32_t Max, TForLoopFunEvent Body, TMtxForLoop* LoopObject = nullptr,
                          TLoopContext Context = {}, int32_t ContextHigh = ContextHighAll);
ROVANE_API bool DoForLoop(int32_t Min, int32_t Max, const TForLoopAnn& Body, TMtxForLoop* LoopObject = nullptr,
                          TLoopContext Context = {}, int32_t ContextHigh = ContextHighAll);
ROVANE_API bool DoForLoop(int32_t Min, int32_t Max, const TForLoopRangeEvent& Body,
                          TMtxForLoop* LoopObject = nullptr, TLoopContext Context = {},
                          int32_t ContextHigh = ContextHighAll);
ROVANE_API bool DoForLoop(int32_t Min, int32_t Max, TForLoopRangeFunEvent Body, TMtxForLoop* LoopObject = nullptr,
                          TLoopContext Context = {}, int32_t ContextHigh = ContextHighAll);
ROVANE_API bool DoForLoop(int32_t Min, int32_t Max, const TForLoopRangeAnn& Body, TMtxForLoop* LoopObject = nullptr,
                          TLoopContext Context = {}, int32_t ContextHigh = ContextHighAll);
ROVANE_API bool DoWhileLoop(const TWhileLoopEvent& Body, TMtxForLoop* LoopObject = nullptr,
                            TLoopContext Context = {}, int32_t ContextHigh = ContextHighAll);
ROVANE_API bool DoWhileLoop(TWhileLoopFunEvent Body, TMtxForLoop* LoopObject = nullptr, TLoopContext Context = {},
                            int32_t ContextHigh = ContextHighAll);

namespace loop_detail {
template <class F>
inline constexpr bool IsBodyObject =
    !std::is_pointer_v<std::decay_t<F>> && !std::is_function_v<std::remove_reference_t<F>> &&
    !std::is_same_v<std::remove_cvref_t<F>, TForLoopEvent> && !std::is_same_v<std::remove_cvref_t<F>, TForLoopAnn> &&
    !std::is_same_v<std::remove_cvref_t<F>, TForLoopRangeEvent> &&
    !std::is_same_v<std::remove_cvref_t<F>, TForLoopRangeAnn> &&
    !std::is_same_v<std::remove_cvref_t<F>, TWhileLoopEvent>;
}  // namespace loop_detail

// A lambda or other callable object: the closure forms.
template <class F>
    requires(loop_detail::IsBodyObject<F> && std::is_invocable_v<F&, int32_t, TLoopContext, int32_t>)
bool DoForLoop(int32_t Min, int32_t Max, F&& Body, TMtxForLoop* LoopObject = nullptr, TLoopContext Context = {},
               int32_t ContextHigh = ContextHighAll) {
    return DoForLoop(Min, Max, TForLoopAnn(std::forward<F>(Body)), LoopObject, Context, ContextHigh);
}
template <class F>
    requires(loop_detail::IsBodyObject<F> && std::is_invocable_v<F&, int32_t, int32_t, TLoopContext, int32_t>)
bool DoForLoop(int32_t Min, int32_t Max, F&& Body, TMtxForLoop* LoopObject = nullptr, TLoopContext Context = {},
               int32_t ContextHigh = ContextHighAll) {
    return DoForLoop(Min, Max, TForLoopRangeAnn(std::forward<F>(Body)), LoopObject, Context, ContextHigh);
}
template <class F>
    requires(loop_detail::IsBodyObject<F> && std::is_invocable_v<F&, bool&, TLoopContext, int32_t>)
bool DoWhileLoop(F&& Body, TMtxForLoop* LoopObject = nullptr, TLoopContext Context = {},
                 int32_t ContextHigh = ContextHighAll) {
    return DoWhileLoop(TWhileLoopEvent(std::forward<F>(Body)), LoopObject, Context, ContextHigh);
}

}  // namespace rovane
