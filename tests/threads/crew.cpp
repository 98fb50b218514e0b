// SPDX-License-Identifier: MIT
// Keeps account of the threads by standing between the library and pthread_mutex_lock().
#include "tests/threads/crew.h"

#include "frame/zelTagState.h"

#include <array>
#include <atomic>
#include <sched.h>
#include <stdexcept>
#include <utility>

namespace zel::test {

namespace {

enum class Stand { Moving, AtLock, Ended };

struct Member {
    std::atomic<Stand> stand = Stand::Ended;
    std::atomic<int> waits = 0;
};

// Relaxed throughout: a sanitizer must see no order between the threads but the lock's own.
constexpr auto kOrder = std::memory_order_relaxed;
constexpr std::size_t kMost = 8;
constexpr int kNobody = -2;

std::array<Member, kMost> members;
std::atomic<int> staying = kNobody;
thread_local int selfIndex = Crew::kOutsider;

Member& at(int index) { return members.at(static_cast<std::size_t>(index)); }

void setStand(Stand stand) {
    if (selfIndex != Crew::kOutsider)
        at(selfIndex).stand.store(stand, kOrder);
}

bool isAnotherMoving() {
    for (const Member& member : members)
        if (&member != &at(selfIndex) && member.stand.load(kOrder) == Stand::Moving)
            return true;
    return false;
}

void countWait() {
    if (selfIndex != Crew::kOutsider)
        at(selfIndex).waits.fetch_add(1, kOrder);
}

} // namespace

Crew::Crew(int size) {
    for (int index = 0; index < size; ++index) {
        at(index).stand.store(Stand::Moving, kOrder);
        at(index).waits.store(0, kOrder);
    }
}

void Crew::start(std::function<void()> work) {
    threads_.emplace_back([index = static_cast<int>(threads_.size()), work = std::move(work)] {
        selfIndex = index;
        work();
        setStand(Stand::Ended);
    });
}

void Crew::join() {
    for (std::thread& thread : threads_)
        thread.join();
    threads_.clear();
}

int Crew::self() { return selfIndex; }

int Crew::waits(int member) { return at(member).waits.load(kOrder); }

void Crew::stayInExchange() {
    int nobody = kNobody;
    if (selfIndex == kOutsider || !staying.compare_exchange_strong(nobody, selfIndex, kOrder))
        return;
    while (isAnotherMoving())
        sched_yield();
    staying.store(kNobody, kOrder);
}

void Crew::awaitExchangeOf(int member) {
    while (staying.load(kOrder) != member && at(member).stand.load(kOrder) != Stand::Ended)
        sched_yield();
}

} // namespace zel::test

// The linker sends every call of pthread_mutex_lock() here and knows the real one by this name.
extern "C" {

int __real_pthread_mutex_lock(pthread_mutex_t* mutex);
int __wrap_pthread_mutex_lock(pthread_mutex_t* mutex);

int __wrap_pthread_mutex_lock(pthread_mutex_t* mutex) {
    using namespace zel::test;
    if (mutex != &zelLock)
        return __real_pthread_mutex_lock(mutex);
    if (pthread_mutex_trylock(mutex) == 0)
        return 0;
    countWait();
    setStand(Stand::AtLock);
    const int result = __real_pthread_mutex_lock(mutex);
    setStand(Stand::Moving);
    return result;
}
}
