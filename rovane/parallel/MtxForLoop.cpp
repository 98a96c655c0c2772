// Parallel loop object, its worker threads, and the loop functions.
#include "rovane/parallel/MtxForLoop.h"

#include <pthread.h>
#include <sched.h>
#include <sys/resource.h>
#include <sys/syscall.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <chrono>
#include <condition_variable>
#include <fstream>
#include <future>
#include <mutex>
#include <sstream>
#include <thread>
#include <tuple>

#include "rovane/storage/ObjectCache.h"
#include "rovane/storage/Platform.h"

namespace rovane {

namespace {

const char* const kBusyText = "Thread object is busy computing!";

int64_t TimerNow() {
    return std::chrono::duration_cast<std::chrono::nanoseconds>(std::chrono::steady_clock::now().time_since_epoch())
        .count();
}

// The loop object whose worker the calling thread is, if any: a body that
// starts or waits on its own loop would wait for itself.
thread_local const TMtxForLoop* tWorkerOf = nullptr;

}  // namespace

// ---------------------------------------------------------------------------
// Manual-reset event. The state is the flag itself: readers test it without
// the lock; waiters sleep on the condition variable. Signal takes the lock
// (empty section) after changing the state, so a waiter that tested the
// state under the lock is either asleep already or sees the new state.
// ---------------------------------------------------------------------------
class TMtxEvent {
public:
    explicit TMtxEvent(bool signalled) : fState(signalled ? 1 : 0) {}

    bool IsSet() const { return fState.load(std::memory_order_acquire) > 0; }

    void Signal() {
        if (fState.load(std::memory_order_acquire) != 0) return;
        if (fState.exchange(1, std::memory_order_acq_rel) != 0) return;
        Wake();
    }

    void Reset() { fState.store(0, std::memory_order_release); }

    // Wakes the waiters so that they test their condition again.
    void Wake() {
        { std::lock_guard<std::mutex> guard(fLock); }
        fCv.notify_all();
    }

    void Wait() {
        if (IsSet()) return;
        std::unique_lock<std::mutex> lock(fLock);
        fCv.wait(lock, [&] { return IsSet(); });
    }

    // Waits until the event is set or `other` holds.
    template <class Pred>
    void WaitOr(Pred other) {
        if (IsSet() || other()) return;
        std::unique_lock<std::mutex> lock(fLock);
        fCv.wait(lock, [&] { return IsSet() || other(); });
    }

    bool WaitUntil(std::chrono::steady_clock::time_point deadline) {
        if (IsSet()) return true;
        std::unique_lock<std::mutex> lock(fLock);
        return fCv.wait_until(lock, deadline, [&] { return IsSet(); });
    }

private:
    std::atomic<int32_t> fState;
    std::mutex fLock;
    std::condition_variable fCv;
};

// ---------------------------------------------------------------------------
// Threads.
// ---------------------------------------------------------------------------
struct TMtxThreadInternal::TImpl {
    std::thread thread;
};

TMtxThreadInternal::TMtxThreadInternal() : fImpl(std::make_unique<TImpl>()) {}

TMtxThreadInternal::~TMtxThreadInternal() { WaitFor(); }

void TMtxThreadInternal::Start() {
    if (fImpl->thread.joinable()) return;
    std::promise<void> running;
    std::future<void> started = running.get_future();
    // The thread publishes its own ids before anything reads them, so that
    // neither it nor its creator touches the std::thread object the other
    // is writing.
    fImpl->thread = std::thread([this, ready = std::move(running)]() mutable {
        fHandle.store(static_cast<uint64_t>(pthread_self()), std::memory_order_release);
        fTid.store(static_cast<int32_t>(syscall(SYS_gettid)), std::memory_order_release);
        ready.set_value();
        Execute();
    });
    started.wait();
}

void TMtxThreadInternal::WaitFor() noexcept {
    if (fImpl && fImpl->thread.joinable() && fImpl->thread.get_id() != std::this_thread::get_id())
        fImpl->thread.join();
}

bool TMtxThreadInternal::Running() const { return Tid() != 0; }

uint64_t TMtxThreadInternal::Handle() const { return fHandle.load(std::memory_order_acquire); }

void TMtxThreadInternal::Execute() {
    // Marked around OnExecute; a thread that manages its pool per job (the
    // loop workers) unmarks itself first.
    if (Controller) Controller->MarkThread();
    try {
        if (OnExecute) OnExecute(*this);
    } catch (...) {
    }
    try {
        if (Controller) Controller->UnMarkThread();
    } catch (...) {
    }
}

void TMtxThread::SetName(const std::string& name, const std::string& suffix) {
    if (!Running()) return;
    // The kernel keeps 15 characters; the suffix (a worker's index) stays
    // whole so that the workers of a set remain apart.
    constexpr size_t kMax = 15;
    std::string text;
    if (suffix.size() >= kMax)
        text = suffix.substr(suffix.size() - kMax);
    else
        text = name.substr(0, kMax - suffix.size()) + suffix;
    pthread_setname_np(static_cast<pthread_t>(Handle()), text.c_str());
}

void TMtxThread::SetPriority(TThreadPriority priority, int32_t baseNice) {
    const int32_t tid = Tid();
    if (tid == 0) return;
    static const int32_t offsets[] = {19, 10, 5, 0, -5, -10, -20};
    const int32_t index = std::clamp<int32_t>(priority, tpIdle, tpTimeCritical);
    const int32_t nice = std::clamp(index == tpIdle ? 19 : baseNice + offsets[index], -20, 19);
    sched_param param{};
    param.sched_priority = 0;
    // A refusal (raising the priority without the privilege) leaves the
    // thread as it is: priority is a hint, not part of the results.
    pthread_setschedparam(static_cast<pthread_t>(Handle()), index == tpIdle ? SCHED_IDLE : SCHED_OTHER, &param);
    setpriority(PRIO_PROCESS, static_cast<id_t>(tid), nice);
}

void TMtxThread::SetAffinityMask(uint64_t Mask) {
    std::vector<int32_t> processors;
    for (int32_t i = 0; i < 64; ++i)
        if (Mask >> i & 1u) processors.push_back(i);
    SetAffinityProcessors(processors);
}

void TMtxThread::SetAffinityProcessors(const std::vector<int32_t>& processors) {
    cpu_set_t set;
    CPU_ZERO(&set);
    for (int32_t p : processors)
        if (p >= 0 && p < CPU_SETSIZE) CPU_SET(p, &set);
    if (!Running() || CPU_COUNT(&set) == 0 ||
        pthread_setaffinity_np(static_cast<pthread_t>(Handle()), sizeof(set), &set) != 0)
        ERaise("SetThreadAffinityMask returned an error!");
}

struct TLoopThread::TErrorBox {
    mutable std::mutex lock;
    std::string text;
};

TLoopThread::TLoopThread(TMtxForLoop* owner, int32_t threadIndex)
    : Owner(owner),
      ThreadIndex(threadIndex),
      fStartEvent(std::make_unique<TMtxEvent>(false)),
      fIdleEvent(std::make_unique<TMtxEvent>(true)),
      fFinishEvent(std::make_unique<TMtxEvent>(true)),
      fError(std::make_unique<TErrorBox>()) {}

// The thread ends before its events go.
TLoopThread::~TLoopThread() { WaitFor(); }

std::string TLoopThread::ErrorMessage() const {
    std::lock_guard<std::mutex> guard(fError->lock);
    return fError->text;
}

void TLoopThread::RecordError(const char* message) {
    std::lock_guard<std::mutex> guard(fError->lock);
    if (MessageTrigger.load(std::memory_order_relaxed)) return;
    fError->text = message;
    MessageTrigger.store(true, std::memory_order_release);
}

void TLoopThread::ClearError() {
    std::lock_guard<std::mutex> guard(fError->lock);
    fError->text.clear();
    MessageTrigger.store(false, std::memory_order_relaxed);
}

void TLoopThread::SignalStart() { fStartEvent->Signal(); }
void TLoopThread::ResetStart() { fStartEvent->Reset(); }
void TLoopThread::SignalIdle() { fIdleEvent->Signal(); }
void TLoopThread::ResetProcessingIdle() { fIdleEvent->Reset(); }
void TLoopThread::SignalProcessingFinished() { fFinishEvent->Signal(); }
void TLoopThread::ResetProcessingFinished() { fFinishEvent->Reset(); }
bool TLoopThread::StartSignaled() const { return fStartEvent->IsSet(); }
bool TLoopThread::ProcessingIdleSignaled() const { return fIdleEvent->IsSet(); }
bool TLoopThread::ProcessingFinishSignaled() const { return fFinishEvent->IsSet(); }
void TLoopThread::ResetContext() { Context.clear(); }

// ---------------------------------------------------------------------------
// Processors.
// ---------------------------------------------------------------------------
namespace {

bool ReadLine(const std::string& path, std::string& line) {
    std::ifstream in(path);
    return static_cast<bool>(std::getline(in, line));
}

// "0-3,8,10-11" to the list of numbers.
std::vector<int32_t> ParseCpuList(const std::string& text) {
    std::vector<int32_t> cpus;
    std::stringstream items(text);
    std::string item;
    while (std::getline(items, item, ',')) {
        if (item.empty() || item.find_first_not_of(" \n") == std::string::npos) continue;
        const auto dash = item.find('-');
        try {
            const int32_t lo = std::stoi(item.substr(0, dash));
            const int32_t hi = dash == std::string::npos ? lo : std::stoi(item.substr(dash + 1));
            for (int32_t c = lo; c <= hi && c < CPU_SETSIZE; ++c) cpus.push_back(c);
        } catch (const std::exception&) {
        }
    }
    return cpus;
}

// The processors this process may be given: those of its control group's
// processor set where one is published, else those online.
std::vector<int32_t> SystemProcessors() {
    std::ifstream groups("/proc/self/cgroup");
    std::string line;
    while (std::getline(groups, line)) {
        if (line.rfind("0::", 0) != 0) continue;
        std::string path = line.substr(3);
        if (path == "/") path.clear();
        std::string cpus;
        if (ReadLine("/sys/fs/cgroup" + path + "/cpuset.cpus.effective", cpus)) {
            auto list = ParseCpuList(cpus);
            if (!list.empty()) return list;
        }
    }
    std::string online;
    if (ReadLine("/sys/devices/system/cpu/online", online)) {
        auto list = ParseCpuList(online);
        if (!list.empty()) return list;
    }
    std::vector<int32_t> all(static_cast<size_t>(std::max<long>(1, sysconf(_SC_NPROCESSORS_ONLN))));
    for (size_t i = 0; i < all.size(); ++i) all[i] = static_cast<int32_t>(i);
    return all;
}

// The processors of the process (its main thread's mask).
std::vector<int32_t> ProcessProcessors() {
    cpu_set_t set;
    CPU_ZERO(&set);
    std::vector<int32_t> cpus;
    if (sched_getaffinity(getpid(), sizeof(set), &set) != 0) return SystemProcessors();
    for (int32_t c = 0; c < CPU_SETSIZE; ++c)
        if (CPU_ISSET(c, &set)) cpus.push_back(c);
    return cpus;
}

// Orders processors by package, then core, then number, so that a range of
// consecutive positions is a set of neighbouring cores and the hardware
// threads of a core stay together.
std::vector<int32_t> TopologyOrder(std::vector<int32_t> cpus) {
    auto id = [](int32_t cpu, const char* what) {
        std::string text;
        if (!ReadLine("/sys/devices/system/cpu/cpu" + std::to_string(cpu) + "/topology/" + what, text)) return -1;
        try {
            return std::stoi(text);
        } catch (const std::exception&) {
            return -1;
        }
    };
    std::vector<std::tuple<int32_t, int32_t, int32_t>> keyed;
    for (int32_t c : cpus) keyed.emplace_back(id(c, "physical_package_id"), id(c, "core_id"), c);
    std::sort(keyed.begin(), keyed.end());
    for (size_t i = 0; i < keyed.size(); ++i) cpus[i] = std::get<2>(keyed[i]);
    return cpus;
}

}  // namespace

void TMtxForLoop::AffinityRange(TThreadAffinityMode Mode, int32_t Processors, int32_t Threads, int32_t ThreadIndex,
                                int32_t& First, int32_t& Last) {
    static const int32_t groupsOf[] = {1, 2, 4, 8};
    const int32_t groups = groupsOf[std::clamp<int32_t>(Mode, tamDefault, tamSplit8)];
    const int32_t perGroup = Threads / groups;
    const int32_t group = perGroup > 0 ? std::min(ThreadIndex / perGroup, groups - 1) : groups - 1;
    const int32_t width = Processors / groups;
    First = group * width;
    Last = group == groups - 1 ? Processors - 1 : (group + 1) * width - 1;
}

void TMtxForLoop::UpdateThreadAffinity(TThreadAffinityMode mode) {
    const std::vector<int32_t> process = ProcessProcessors();
    if (process.size() != SystemProcessors().size()) ERaise("Process specific thread assignment is not supported!");
    const std::vector<int32_t> order = TopologyOrder(process);
    const auto processors = static_cast<int32_t>(order.size());
    const auto threads = static_cast<int32_t>(ThreadList.size());
    // All masks are worked out before any is applied.
    std::vector<std::vector<int32_t>> masks(ThreadList.size());
    for (int32_t i = 0; i < threads; ++i) {
        int32_t first, last;
        AffinityRange(mode, processors, threads, i, first, last);
        if (last < first) ERaise("SetThreadAffinityMask returned an error!");
        masks[i].assign(order.begin() + first, order.begin() + last + 1);
    }
    for (int32_t i = 0; i < threads; ++i) ThreadList[i]->SetAffinityProcessors(masks[i]);
}

// ---------------------------------------------------------------------------
// The loop object.
// ---------------------------------------------------------------------------
TMtxForLoop::TMtxForLoop() {
    errno = 0;
    const int nice = getpriority(PRIO_PROCESS, 0);
    fBaseNice = errno == 0 ? nice : 0;
    FPriority = tpNormal;
    FNameOfThreadSet = "MtxForLoop";
    SetThreadCount(Controller ? Controller->CpuCores() : NumCoresOnDie());
}

TMtxForLoop::~TMtxForLoop() { StopWorkers(); }

void TMtxForLoop::RaiseIfCalledFromBody() const {
    if (tWorkerOf == this) ERaise(kBusyText);
}

void TMtxForLoop::StopWorkers() noexcept {
    Shutdown.store(true);
    for (auto& t : ThreadList) {
        t->CancelProcessing.store(true);
        t->StartEvent().Wake();
    }
    // A body in progress finishes first; then each worker leaves its loop.
    for (auto& t : ThreadList) t->WaitFor();
    ThreadList.clear();
    FThreadCount = 0;
    Shutdown.store(false);
}

void TMtxForLoop::CreateWorkers(int32_t count) {
    ThreadList.reserve(static_cast<size_t>(count));
    try {
        for (int32_t i = 0; i < count; ++i) {
            auto t = std::make_unique<TLoopThread>(this, i);
            t->OnExecute = [this](TMtxThreadInternal& thread) { DoExecute(static_cast<TLoopThread&>(thread)); };
            t->Start();
            // Named and prioritised from here: the worker reads nothing
            // that a setter of this object may be writing.
            t->SetName(FNameOfThreadSet, std::to_string(i));
            t->SetPriority(FPriority, fBaseNice);
            ThreadList.push_back(std::move(t));
        }
    } catch (...) {
        FThreadCount = static_cast<int32_t>(ThreadList.size());
        throw;
    }
    FThreadCount = count;
}

void TMtxForLoop::SetThreadCount(int32_t value) {
    value = std::max(value, 1);
    if (value == FThreadCount && static_cast<int32_t>(ThreadList.size()) == value) return;
    RaiseIfCalledFromBody();
    StopWorkers();
    CreateWorkers(value);
}

void TMtxForLoop::SetPriority(TThreadPriority value) {
    FPriority = value;
    for (auto& t : ThreadList) t->SetPriority(value, fBaseNice);
}

void TMtxForLoop::SetNameOfThreadSet(const std::string& value) {
    FNameOfThreadSet = value;
    for (auto& t : ThreadList) t->SetName(value, std::to_string(t->ThreadIndex));
}

void TMtxForLoop::SetThreadAffinityMode(TThreadAffinityMode value) {
    if (value == FThreadAffinityMode) return;
    UpdateThreadAffinity(value);
    FThreadAffinityMode = value;
}

void TMtxForLoop::Start() { Start(TLoopContext(), -1); }

void TMtxForLoop::Start(TLoopContext Context, int32_t High) {
    RaiseIfCalledFromBody();
    const auto size = static_cast<int64_t>(Context.size());
    int64_t count = size;
    if (High != ContextHighAll) {
        if (High < -1 || High >= size)
            ERangeErrorRaiseFmt("TMtxForLoop.Start: High = %d, High(Context) = %d", High, size - 1);
        count = High + 1;
    }
    if (ThreadList.empty()) CreateWorkers(std::max(FThreadCount, 1));
    // The finish flags are reset only here, so they tell reliably whether
    // the previous job is over; the idle flags lag behind a start.
    if (!IsProcessingIdle() || !IsProcessingFinished()) WaitForFinishFlags(false);

    fDenormalsAreZero = Controller && Controller->DenormalsAreZero();
    GlobalLoopIndex.store(int64_t(FMin) - 1);
    // Contiguous ranges; the first Count mod T workers take one index more.
    // Worked in 64 bits: Max - Min + 1 overflows 32 bits at the extremes.
    const auto threads = static_cast<int64_t>(ThreadList.size());
    const int64_t total = int64_t(FMax) - FMin + 1;
    const int64_t base = total / threads;
    const int64_t rest = total % threads;
    int64_t cursor = FMin;
    for (int64_t i = 0; i < threads; ++i) {
        TLoopThread& t = *ThreadList[static_cast<size_t>(i)];
        int64_t lo = cursor;
        cursor += base + (i < rest ? 1 : 0);
        int64_t hi = cursor - 1;
        // An empty range past a Max of 2^31 - 1 keeps to 32 bits.
        if (lo > INT32_MAX) lo = INT32_MAX, hi = INT32_MAX - 1;
        t.Min = static_cast<int32_t>(lo);
        t.Max = static_cast<int32_t>(hi);
        t.ClearError();
        t.fStartTime.store(0);
        t.fStopTime.store(0);
        t.LoopIndex.store(FThreadingMode == tmForLoop ? t.Min : 0);
        t.CancelProcessing.store(false);
        t.ResetProcessingFinished();
        t.Context.assign(Context.begin(), Context.begin() + count);
    }
    for (auto& t : ThreadList) t->SignalStart();
}

void TMtxForLoop::DoExecute(TLoopThread& t) {
    tWorkerOf = this;
    // Idle, the worker holds no pool.
    try {
        if (Controller) Controller->UnMarkThread();
    } catch (...) {
    }
    InstallRovaneFPState();
    for (;;) {
        t.StartEvent().WaitOr([&] { return Shutdown.load(); });
        if (!t.StartSignaled()) {
            if (Shutdown.load()) break;
            continue;
        }
        t.ResetProcessingIdle();
        const int64_t start = TimerNow();
        t.fStartTime.store(start);
        SetDenormalsAreZeroForThread(fDenormalsAreZero);
        // The pool is the worker's for the length of the job.
        if (Controller) {
            Controller->MarkThread();
            t.HeapIndex.store(Controller->GetPoolIndex());
        }
        try {
            RunJob(t);
        } catch (const std::exception& e) {
            t.RecordError(e.what());
        } catch (...) {
            t.RecordError("Unknown exception");
        }
        try {
            if (Controller) Controller->UnMarkThread();
        } catch (const std::exception& e) {
            // A body that kept a cached object: reported like its own error.
            t.RecordError(e.what());
        }
        t.fStopTime.store(static_cast<double>(TimerNow() - start) * 1e-9);
        t.SignalIdle();
        t.ResetStart();
        t.SignalProcessingFinished();
        if (Shutdown.load()) break;
    }
    // Nothing of this worker is pending any more.
    t.SignalIdle();
    t.SignalProcessingFinished();
}

void TMtxForLoop::RunJob(TLoopThread& t) {
    const TLoopContext context(t.Context.data(), t.Context.size());
    const int32_t index = t.ThreadIndex;
    switch (FThreadingMode) {
        case tmForLoop:
            if (FOnForLoopRange) FOnForLoopRange(t.Min, t.Max, context, index);
            if (FOnForLoopRangeFun) FOnForLoopRangeFun(t.Min, t.Max, context, index);
            if (FOnForLoopRangeAnn) FOnForLoopRangeAnn(t.Min, t.Max, context, index);
            break;
        case tmWhileLoop: {
            if (!FOnWhileLoop && !FOnWhileLoopFun) break;
            bool stop = false;
            while (!stop) {
                if (FOnWhileLoop)
                    FOnWhileLoop(stop, context, index);
                else
                    FOnWhileLoopFun(stop, context, index);
                t.LoopIndex.fetch_add(1);
                if (t.CancelProcessing.load(std::memory_order_relaxed)) break;
            }
            break;
        }
        case tmGreedyForLoop: {
            const int64_t last = FMax;
            auto drain = [&](const auto& body) {
                int64_t i = GlobalLoopIndex.fetch_add(1) + 1;
                while (i <= last) {
                    body(static_cast<int32_t>(i), context, index);
                    i = GlobalLoopIndex.fetch_add(1) + 1;
                    if (t.CancelProcessing.load(std::memory_order_relaxed)) break;
                }
            };
            if (FOnForLoopFun)
                drain(FOnForLoopFun);
            else if (FOnForLoop)
                drain(FOnForLoop);
            if (FOnForLoopAnn) drain(FOnForLoopAnn);
            break;
        }
    }
}

void TMtxForLoop::WaitForFinishFlags(bool processMessages) {
    if (!processMessages || !FOnProcessMessages) {
        for (auto& t : ThreadList) t->FinishEvent().Wait();
        return;
    }
    for (;;) {
        const auto deadline = std::chrono::steady_clock::now() + std::chrono::milliseconds(20);
        bool all = true;
        for (auto& t : ThreadList)
            if (!t->FinishEvent().WaitUntil(deadline)) {
                all = false;
                break;
            }
        if (all) return;
        FOnProcessMessages();
    }
}

void TMtxForLoop::WaitFor() {
    RaiseIfCalledFromBody();
    if (!IsProcessingIdle())
        for (auto& t : ThreadList) t->ProcessingIdleEvent().Wait();
    ResetContext();
}

void TMtxForLoop::WaitForProcessingFinish(bool ProcessMessages) {
    RaiseIfCalledFromBody();
    WaitForFinishFlags(ProcessMessages);
    ResetContext();
}

bool TMtxForLoop::IsProcessingIdle() const {
    for (const auto& t : ThreadList)
        if (!t->ProcessingIdleSignaled()) return false;
    return true;
}

bool TMtxForLoop::IsProcessingFinished() const {
    for (const auto& t : ThreadList)
        if (!t->ProcessingFinishSignaled()) return false;
    return true;
}

void TMtxForLoop::CancelProcessing() {
    for (auto& t : ThreadList) t->CancelProcessing.store(true);
}

void TMtxForLoop::Stop() {
    CancelProcessing();
    WaitFor();
}

void TMtxForLoop::Enter() {
    for (;;) {
        uint8_t expected = 0;
        if (csLock.compare_exchange_strong(expected, 1, std::memory_order_acquire)) return;
        csLock.wait(1, std::memory_order_relaxed);
    }
}

void TMtxForLoop::Leave() {
    csLock.store(0, std::memory_order_release);
    csLock.notify_all();
}

std::string TMtxForLoop::ErrorMessages() const {
    std::string text;
    for (size_t i = 0; i < ThreadList.size(); ++i) {
        if (i > 0) text += "; ";
        text += ThreadList[i]->ErrorMessage();
    }
    return text;
}

std::string TMtxForLoop::GetErrorMessage(int32_t ThreadIndex) const {
    if (ThreadIndex < 0 || ThreadIndex >= static_cast<int32_t>(ThreadList.size()))
        ERaise("TMtxForLoop.GetErrorMessage: ThreadIndex > ThreadCount !");
    return ThreadList[static_cast<size_t>(ThreadIndex)]->ErrorMessage();
}

bool TMtxForLoop::HasRaisedErrors() const {
    for (const auto& t : ThreadList)
        if (t->MessageTrigger.load(std::memory_order_acquire)) return true;
    return false;
}

int64_t TMtxForLoop::CombinedLoopCount() const {
    if (IsProcessingIdle()) return 0;
    int64_t sum = 0;
    switch (FThreadingMode) {
        case tmForLoop:
            for (const auto& t : ThreadList) sum += int64_t(t->LoopIndex.load()) - t->Min;
            return sum;
        case tmWhileLoop:
            for (const auto& t : ThreadList) sum += t->LoopIndex.load();
            return sum;
        case tmGreedyForLoop:
            return GlobalLoopIndex.load() - FMin;
    }
    return 0;
}

int64_t TMtxForLoop::CombinedLoopIndex() const {
    if (IsProcessingIdle()) return -1;
    switch (FThreadingMode) {
        case tmForLoop: return FMin + CombinedLoopCount();
        case tmWhileLoop: return CombinedLoopCount();
        case tmGreedyForLoop: return GlobalLoopIndex.load();
    }
    return -1;
}

double TMtxForLoop::LoopRunningTime() const {
    double longest = 0;
    const int64_t now = TimerNow();
    for (const auto& t : ThreadList) {
        const int64_t start = t->StartTime();
        if (start <= 0) continue;
        const double stop = t->StopTime();
        longest = std::max(longest, stop != 0 ? stop : static_cast<double>(now - start) * 1e-9);
    }
    return longest * 1000;
}

TLoopThread* TMtxForLoop::GetThread(int32_t i) const {
    if (i < 0 || i >= static_cast<int32_t>(ThreadList.size()))
        ERaise("TMtxForLoop.GetThread: ThreadIndex > ThreadCount !");
    return ThreadList[static_cast<size_t>(i)].get();
}

void TMtxForLoop::ResetContext() {
    for (auto& t : ThreadList) t->ResetContext();
}

void TMtxForLoop::ResetFunctions() {
    FOnForLoop = nullptr;
    FOnForLoopFun = nullptr;
    FOnForLoopAnn = nullptr;
    FOnForLoopRange = nullptr;
    FOnForLoopRangeFun = nullptr;
    FOnForLoopRangeAnn = nullptr;
    FOnWhileLoop = nullptr;
    FOnWhileLoopFun = nullptr;
}

// ---------------------------------------------------------------------------
// Loop functions.
// ---------------------------------------------------------------------------
namespace {
// The shared object, made by the first call that needs it and ended with
// the library (before the controller, which was made before it).
TMtxForLoop& DefaultLoop() {
    static TMtxForLoop loop;
    return loop;
}
}  // namespace

struct TLoopRunner {
    template <class SetBody>
    static bool Run(TMtxForLoop* object, const int32_t* min, const int32_t* max, TMtxForLoop::TThreadingMode mode,
                    const SetBody& setBody, TLoopContext context, int32_t high) {
        TMtxForLoop& loop = object ? *object : DefaultLoop();
        loop.RaiseIfCalledFromBody();
        if (!loop.IsProcessingIdle() || !loop.IsProcessingFinished() || loop.fRunClaimed.exchange(true))
            ERaise(kBusyText);
        struct Release {
            std::atomic<bool>& claim;
            ~Release() { claim.store(false); }
        } release{loop.fRunClaimed};
        if (min) loop.SetMin(*min);
        if (max) loop.SetMax(*max);
        loop.ResetFunctions();
        setBody(loop);
        loop.SetThreadingMode(mode);
        loop.Start(context, high);
        loop.WaitForProcessingFinish(false);
        return loop.HasRaisedErrors();
    }
};

bool DoForLoop(int32_t Min, int32_t Max, const TForLoopEvent& Body, TMtxForLoop* LoopObject, TLoopContext Context,
               int32_t ContextHigh) {
    return TLoopRunner::Run(
        LoopObject, &Min, &Max, tmGreedyForLoop, [&](TMtxForLoop& l) { l.SetOnForLoop(Body); }, Context, ContextHigh);
}

bool DoForLoop(int32_t Min, int32_t Max, TForLoopFunEvent Body, TMtxForLoop* LoopObject, TLoopContext Context,
               int32_t ContextHigh) {
    return TLoopRunner::Run(
        LoopObject, &Min, &Max, tmGreedyForLoop, [&](TMtxForLoop& l) { l.SetOnForLoopFun(Body); }, Context,
        ContextHigh);
}

bool DoForLoop(int32_t Min, int32_t Max, const TForLoopAnn& Body, TMtxForLoop* LoopObject, TLoopContext Context,
               int32_t ContextHigh) {
    return TLoopRunner::Run(
        LoopObject, &Min, &Max, tmGreedyForLoop, [&](TMtxForLoop& l) { l.SetOnForLoopAnn(Body); }, Context,
        ContextHigh);
}

bool DoForLoop(int32_t Min, int32_t Max, const TForLoopRangeEvent& Body, TMtxForLoop* LoopObject,
               TLoopContext Context, int32_t ContextHigh) {
    return TLoopRunner::Run(
        LoopObject, &Min, &Max, tmForLoop, [&](TMtxForLoop& l) { l.SetOnForLoopRange(Body); }, Context, ContextHigh);
}

bool DoForLoop(int32_t Min, int32_t Max, TForLoopRangeFunEvent Body, TMtxForLoop* LoopObject, TLoopContext Context,
               int32_t ContextHigh) {
    return TLoopRunner::Run(
        LoopObject, &Min, &Max, tmForLoop, [&](TMtxForLoop& l) { l.SetOnForLoopRangeFun(Body); }, Context,
        ContextHigh);
}

bool DoForLoop(int32_t Min, int32_t Max, const TForLoopRangeAnn& Body, TMtxForLoop* LoopObject,
               TLoopContext Context, int32_t ContextHigh) {
    return TLoopRunner::Run(
        LoopObject, &Min, &Max, tmForLoop, [&](TMtxForLoop& l) { l.SetOnForLoopRangeAnn(Body); }, Context,
        ContextHigh);
}

bool DoWhileLoop(const TWhileLoopEvent& Body, TMtxForLoop* LoopObject, TLoopContext Context, int32_t ContextHigh) {
    return TLoopRunner::Run(
        LoopObject, nullptr, nullptr, tmWhileLoop, [&](TMtxForLoop& l) { l.SetOnWhileLoop(Body); }, Context, ContextHigh);
}

bool DoWhileLoop(TWhileLoopFunEvent Body, TMtxForLoop* LoopObject, TLoopContext Context, int32_t ContextHigh) {
    return TLoopRunner::Run(
        LoopObject, nullptr, nullptr, tmWhileLoop, [&](TMtxForLoop& l) { l.SetOnWhileLoopFun(Body); }, Context,
        ContextHigh);
}

}  // namespace rovane
