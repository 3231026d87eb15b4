// What a rejected deal costs in the print queue, with one thread and with many.
//
// Each thread takes numbers from one counter and drops them, as workers do. First it does so at
// once, which makes the threads meet all the time; then behind an accepted deal that stays pending,
// so that the numbers are kept; last with some work of its own before each drop, which stands for
// dealing and filtering. `takeNumbers` is the same without the queue: what the counter costs alone.
//
// Read `items_per_second`, the drops of all threads together.
#include "app/print_queue.h"

#include <benchmark/benchmark.h>

#include <atomic>
#include <cstdint>
#include <limits>
#include <memory>

namespace {

using trikon::PrintQueue;

// On a cache line of its own.
struct alignas(64) DealCounter {
    std::atomic<unsigned long> next{0};
};
DealCounter counter;
std::unique_ptr<PrintQueue> queue;

void startQueue(const benchmark::State&)
{
    queue = std::make_unique<PrintQueue>();
    queue->configure(std::numeric_limits<std::uint32_t>::max(), trikon::print_none, true, true);
    counter.next = 0;
}

void startQueueWithPendingDeal(const benchmark::State& state)
{
    startQueue(state);
    queue->accept(queue->dealNumber()++);
}

// A chain of multiplications, between three and five quarters of `state.range(0)` of them.
//
// The length varies so that two threads do not fall into step, or out of it, for ever.
std::uint64_t work(std::uint64_t value, std::uint64_t length)
{
    const std::uint64_t steps = length * 3 / 4 + (value >> 32) % (length / 2 + 1);
    for (std::uint64_t step = 0; step < steps; ++step) {
        value = value * 6364136223846793005U + 1442695040888963407U;
        benchmark::DoNotOptimize(value);
    }
    return value;
}

template <bool queued>
void takeNumbersAnd(benchmark::State& state)
{
    const auto length = static_cast<std::uint64_t>(state.range(0));
    std::uint64_t value = static_cast<std::uint64_t>(state.thread_index()) + 1;
    auto& numbers = queued ? queue->dealNumber() : counter.next;
    for (auto _ : state) {
        const unsigned long number = numbers.fetch_add(1);
        if (length != 0) {
            value = work(value, length);
        }
        benchmark::DoNotOptimize(queued ? queue->drop(number) : number != 0);
    }
    state.SetItemsProcessed(static_cast<std::int64_t>(state.iterations()));
}

void drop(benchmark::State& state) { takeNumbersAnd<true>(state); }
void dropBehindPending(benchmark::State& state) { takeNumbersAnd<true>(state); }
void takeNumbers(benchmark::State& state) { takeNumbersAnd<false>(state); }

constexpr int stepsOf400Nanoseconds = 365;

void withManyThreads(benchmark::internal::Benchmark* bench)
{
    bench->ArgName("work")->Arg(0)->UseRealTime()->Threads(1)->Threads(2)->Threads(8)->Threads(64);
}

void withWork(benchmark::internal::Benchmark* bench)
{
    bench->ArgName("work")->Arg(stepsOf400Nanoseconds)->UseRealTime()->Threads(1)->Threads(2);
}

BENCHMARK(drop)->Apply(withManyThreads)->Setup(startQueue);
BENCHMARK(dropBehindPending)->Apply(withManyThreads)->Setup(startQueueWithPendingDeal);
BENCHMARK(takeNumbers)->Apply(withWork)->Setup(startQueue);
BENCHMARK(drop)->Apply(withWork)->Setup(startQueue);

}  // namespace

BENCHMARK_MAIN();
