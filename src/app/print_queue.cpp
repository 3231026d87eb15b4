// The bookkeeping of deal numbers, and the printing step.
#include "app/print_queue.h"

#include "app/output.h"

#include <algorithm>
#include <bit>
#include <cerrno>
#include <iostream>
#include <iterator>
#include <utility>

namespace trikon {

namespace {

constexpr const char* gap = "   ";

bool isReady(const PrintQueue::Item& item) { return !item.hands.allCards().empty(); }

}  // namespace

void PrintQueue::configure(std::uint32_t deals, PrintFunction function, bool statisticsShown,
                           bool remarksShown)
{
    needed = deals;
    printFunction = std::move(function);
    showStatistics = statisticsShown;
    showRemarks = remarksShown;
}

void PrintQueue::startAt(unsigned long n)
{
    nextNumber = n;
    behindLast = n;
    nextToDeal = n;
}

void PrintQueue::whileNotPrinting(const std::function<void()>& function)
{
    {
        const Lock output(outputMutex, std::try_to_lock);
        if (!output) {
            return;
        }
        function();
    }
    printAll();  // who found the output taken has left his deal to this thread
}

std::uint32_t PrintQueue::accepted() const
{
    const Lock content(contentMutex);
    return printed + static_cast<std::uint32_t>(items.size());
}

std::uint32_t PrintQueue::found() const
{
    const Lock content(contentMutex);
    return printed;
}

unsigned long PrintQueue::endOfPrinted() const
{
    const Lock content(contentMutex);
    return behindLast;
}

bool PrintQueue::nr_is_needed(unsigned long n) const
{
    const Lock content(contentMutex);
    return needed != 0 && (moreNeeded() || n <= items.rbegin()->first);
}

bool PrintQueue::accept(unsigned long n)
{
    const Lock content(contentMutex);
    if (needed == 0) {
        return false;
    }
    items.try_emplace(n);
    if (needed >= items.size()) {
        return true;
    }
    items.erase(std::prev(items.end()));
    const unsigned long last = items.rbegin()->first;
    dropped.eraseStartingAfter(last);  // for the memory: numbers behind the last are never reached
    return n <= last;
}

bool PrintQueue::drop(unsigned long n, std::uint64_t rejected)
{
    Lock content(contentMutex);
    if (needed == 0 || (!moreNeeded() && n > items.rbegin()->first)) {
        return false;
    }
    for (int place = 0; place < burstSize && rejected >> place != 0;) {
        place += std::countr_zero(rejected >> place);
        const int end = place + std::countr_one(rejected >> place);
        recordDropped(n + static_cast<unsigned long>(place), n + static_cast<unsigned long>(end));
        place = end;
    }
    return tryPrintAndUnlockContent(std::move(content));
}

bool PrintQueue::setDetails(unsigned long n, const Hands& hands, NamedCounters& statistics,
                            std::string& remarks)
{
    Lock content(contentMutex);
    const auto found = items.find(n);
    if (found == items.end()) {
        return false;
    }
    found->second.hands = hands;
    found->second.statistics.swap(statistics);
    found->second.remarks.swap(remarks);
    return tryPrintAndUnlockContent(std::move(content));
}

void PrintQueue::terminateWork()
{
    const Lock content(contentMutex);
    forgetAll();
}

void PrintQueue::printAll() { tryPrintAndUnlockContent(Lock(contentMutex)); }

unsigned long PrintQueue::close(unsigned long end)
{
    const Lock output(outputMutex);
    Lock content(contentMutex);
    advanceToPrintable();
    std::erase_if(items, [](const auto& numbered) { return !isReady(numbered.second); });
    const unsigned long finished = items.size() + dropped.count();
    const unsigned long behind = std::max(end, nextNumber) - nextNumber;
    const Items ready = std::move(items);
    if (!ready.empty()) {
        behindLast = ready.rbegin()->first + 1;
    }
    printed += static_cast<std::uint32_t>(ready.size());
    forgetAll();
    content.unlock();
    print(ready);
    return behind - std::min(behind, finished);
}

bool PrintQueue::tryPrintAndUnlockContent(Lock content)
{
    if (!advanceToPrintable()) {
        return moreNeeded();
    }
    const Lock output(outputMutex, std::try_to_lock);
    if (!output) {
        return moreNeeded();
    }
    try {
        do {
            Items batch = takeBatch();
            content.unlock();
            print(batch);
            batch.clear();
            content.lock();
        } while (advanceToPrintable());
    } catch (...) {
        if (!content) {
            content.lock();
        }
        forgetAll();
        throw;
    }
    // The output mutex is released first, while the content mutex is still held: no other thread
    // can find it taken after the last look for printable deals.
    return moreNeeded();
}

void PrintQueue::recordDropped(unsigned long first, unsigned long end)
{
    if (first == nextNumber) {
        nextNumber = end;
    } else {
        dropped.insert(first, end - 1);
    }
}

bool PrintQueue::advanceToPrintable()
{
    nextNumber = dropped.passFirst(nextNumber);
    return !items.empty() && items.begin()->first == nextNumber && isReady(items.begin()->second);
}

PrintQueue::Items PrintQueue::takeBatch()
{
    Items batch;
    while (advanceToPrintable()) {
        // Nodes are moved, so nothing is allocated or copied with the content mutex held.
        batch.insert(batch.end(), items.extract(items.begin()));
        ++nextNumber;
        behindLast = nextNumber;
        --needed;
        ++printed;
    }
    if (needed == 0) {
        over = true;
    }
    return batch;
}

void PrintQueue::forgetAll()
{
    items.clear();
    dropped.clear();
    needed = 0;
    over = true;
}

void PrintQueue::print(const Items& batch)
{
    if (prePrint && !batch.empty()) {
        prePrint();
    }
    errno = 0;  // so that a reason given below is the output's own
    for (const auto& [n, item] : batch) {
        print(item);
    }
    ensureOutputIsWritten();
}

void PrintQueue::print(const Item& item)
{
    const LineState state = printFunction(item.hands);
    const bool withStatistics = showStatistics && !item.statistics.empty();
    const bool withRemarks = showRemarks && !item.remarks.empty();
    if (withStatistics) {
        std::cout << (state == LineOpen ? gap : "");
        item.statistics.printShortly(std::cout);
        std::cout << (state == BlockEnded ? "\n" : "");
    }
    if (withRemarks) {
        const bool lineBegun = state == LineOpen || (state == NothingWritten && withStatistics);
        std::cout << (lineBegun ? gap : "") << item.remarks << (state == BlockEnded ? "\n" : "");
    }
    // Behind a block this leaves the empty line that parts the deals.
    if (state != NothingWritten || withStatistics || withRemarks) {
        std::cout << '\n';
    }
    totals.add(item.statistics);
}

PrintQueue::Mutex::Mutex(int kind)
{
    pthread_mutexattr_t attributes;
    pthread_mutexattr_init(&attributes);
    pthread_mutexattr_settype(&attributes, kind);
    pthread_mutex_init(&mutex, &attributes);
    pthread_mutexattr_destroy(&attributes);
}

}  // namespace trikon
