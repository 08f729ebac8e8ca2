#include "core/many_runs.h"

#include <algorithm>
#include <atomic>
#include <chrono>
#include <exception>
#include <limits>
#include <mutex>
#include <memory>
#include <thread>

#include "core/model.h"
#include "core/provenance.h"
#include "core/run_driver.h"

namespace osm {

namespace {

// Counts the months of a run into the batch's total.
class CountingObserver : public RunObserver {
public:
    explicit CountingObserver(std::atomic<long>& done) : done_(done) {}
    void ShowProgress(const std::string&, const std::string&) override {
        done_.fetch_add(1, std::memory_order_relaxed);
        ++months_;
    }
    long months() const { return months_; }

private:
    std::atomic<long>& done_;
    long months_ = 0;
};

class KeptMessages : public MessageSink {
public:
    explicit KeptMessages(std::vector<ModelMessage>& kept) : kept_(kept) {}
    void Show(const ModelMessage& message) override { kept_.push_back(message); }

private:
    std::vector<ModelMessage>& kept_;
};

}  // namespace

int JobCount(int asked) {
    if (asked > 0) return asked;
    return std::max(1, static_cast<int>(std::thread::hardware_concurrency()));
}

void ForEachParallel(size_t count, int threads, const std::function<void(size_t)>& work) {
    std::atomic<size_t> next{0};
    std::exception_ptr first;
    std::mutex firstLock;
    auto worker = [&] {
        for (size_t i = next++; i < count; i = next++) try {
                work(i);
            } catch (...) {
                const std::lock_guard<std::mutex> hold(firstLock);
                if (!first) first = std::current_exception();
            }
    };
    std::vector<std::thread> pool;
    const size_t n = std::min(count, static_cast<size_t>(std::max(1, threads)));
    for (size_t t = 0; t < n; ++t) pool.emplace_back(worker);
    for (std::thread& t : pool) t.join();
    if (first) std::rethrow_exception(first);
}

ManyRunsResult RunMany(const Model& loaded, const std::vector<RunJob>& jobs, const ManyRunsSetup& setup) {
    ManyRunsResult out;
    out.set = RunSetFor(loaded, setup.years);
    out.set.runs.resize(jobs.size());
    out.messages.resize(jobs.size());
    out.inputs.resize(jobs.size());
    const long total = static_cast<long>(jobs.size()) * setup.years * 12;
    std::atomic<long> done{0};

    auto oneRun = [&](size_t i) {
        InputLog log;
        KeptMessages messages(out.messages[i]);
        CountingObserver observer(done);
        std::string fault;
        auto m = std::make_unique<Model>(loaded);
        m->messages = &messages;
        try {
            if (jobs[i].prepare) jobs[i].prepare(*m);
            StartRun(*m, observer, setup.startYr, setup.years);
        } catch (const std::exception& e) {
            fault = e.what();
        }
        RunValues run = TakeRun(out.set, *m, m->main.NRuns, jobs[i].name);
        // The month a fault stopped was not finished: only the months before it stand.
        if (!fault.empty() && run.months > 0) {
            for (size_t row = 0; row < out.set.rows.size(); ++row)
                for (int r = out.set.firstReach; r <= out.set.lastReach; ++r)
                    run.values[out.set.index(row, r, run.months)] = std::numeric_limits<float>::quiet_NaN();
            --run.months;
        }
        if (setup.finished) try {
                setup.finished(i, *m);
            } catch (const std::exception& e) {
                fault += (fault.empty() ? "" : "; ") + std::string(e.what());
            }
        run.fault = fault;
        out.set.runs[i] = std::move(run);
        out.inputs[i] = log.files();
        done.fetch_add(static_cast<long>(setup.years) * 12 - observer.months(), std::memory_order_relaxed);
    };

    std::atomic<bool> ended{false};
    std::exception_ptr poolFault;
    std::thread pool([&] {
        try {
            ForEachParallel(jobs.size(), JobCount(setup.jobs), oneRun);
        } catch (...) {
            poolFault = std::current_exception();
        }
        ended = true;
    });
    while (!ended) {
        if (setup.progress) setup.progress(done.load(), total);
        std::this_thread::sleep_for(std::chrono::milliseconds(100));
    }
    pool.join();
    if (poolFault) std::rethrow_exception(poolFault);
    if (setup.progress) setup.progress(total, total);
    return out;
}

}  // namespace osm
