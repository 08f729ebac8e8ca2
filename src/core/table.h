#pragma once
// Tables with explicit bounds per dimension. Every index is checked: an index
// outside the bounds is a fault naming the table and the index, so the model can
// never write past a table. Storage runs with the first index fastest.
#include <algorithm>
#include <array>
#include <string>
#include <type_traits>
#include <vector>

#include "core/fault.h"

namespace osm {

struct Bounds {
    int lo = 0;
    int hi = -1;
    int size() const { return hi >= lo ? hi - lo + 1 : 0; }
};

[[noreturn]] void ThrowIndexFault(const std::string& name, int dim, int index, Bounds b);

// vector<bool> hands out no references; a flag is kept in a one-member struct.
struct BoolCell {
    bool value = false;
};
template <typename T>
using CellOf = std::conditional_t<std::is_same_v<T, bool>, BoolCell, T>;
inline bool& CellRef(BoolCell& c) { return c.value; }
inline const bool& CellRef(const BoolCell& c) { return c.value; }
template <typename T>
T& CellRef(T& c) { return c; }

template <typename T, int N>
class Table {
public:
    explicit Table(std::string name = "table") : name_(std::move(name)) {}

    // New bounds, every element set to T{}.
    template <typename... B>
    void redim(B... b) {
        static_assert(sizeof...(B) == N, "one Bounds per dimension");
        bounds_ = {Bounds(b)...};
        size_t n = 1;
        for (int d = 0; d < N; ++d) {
            stride_[d] = n;
            n *= static_cast<size_t>(bounds_[d].size());
        }
        data_.assign(n, CellOf<T>{});
    }

    // New bounds for the last dimension, keeping every element that stays inside.
    void redimPreserve(Bounds last) {
        Table<T, N> old = std::move(*this);
        bounds_ = old.bounds_;
        bounds_[N - 1] = last;
        name_ = old.name_;
        size_t n = 1;
        for (int d = 0; d < N; ++d) {
            stride_[d] = n;
            n *= static_cast<size_t>(bounds_[d].size());
        }
        data_.assign(n, CellOf<T>{});
        const Bounds keep{std::max(last.lo, old.bounds_[N - 1].lo),
                          std::min(last.hi, old.bounds_[N - 1].hi)};
        if (keep.size() == 0) return;
        const size_t inner = stride_[N - 1];
        for (int i = keep.lo; i <= keep.hi; ++i) {
            const auto src = old.data_.begin() + static_cast<long>((i - old.bounds_[N - 1].lo) * inner);
            std::copy(src, src + static_cast<long>(inner),
                      data_.begin() + static_cast<long>((i - last.lo) * inner));
        }
    }

    template <typename... I>
    T& operator()(I... idx) {
        return CellRef(data_[offset({static_cast<int>(idx)...})]);
    }
    template <typename... I>
    const T& operator()(I... idx) const {
        return CellRef(data_[offset({static_cast<int>(idx)...})]);
    }

    Bounds bounds(int dim = 0) const { return bounds_[dim]; }
    int lo(int dim = 0) const { return bounds_[dim].lo; }
    int hi(int dim = 0) const { return bounds_[dim].hi; }
    bool empty() const { return data_.empty(); }
    void fill(const T& v) {
        for (auto& c : data_) CellRef(c) = v;
    }
    void clear() { fill(T{}); }
    const std::string& name() const { return name_; }
    const std::vector<CellOf<T>>& raw() const { return data_; }

private:
    size_t offset(const std::array<int, N>& idx) const {
        size_t off = 0;
        for (int d = 0; d < N; ++d) {
            const Bounds& b = bounds_[d];
            if (idx[d] < b.lo || idx[d] > b.hi) ThrowIndexFault(name_, d, idx[d], b);
            off += static_cast<size_t>(idx[d] - b.lo) * stride_[d];
        }
        return off;
    }

    std::string name_;
    std::array<Bounds, N> bounds_{};
    std::array<size_t, N> stride_{};
    std::vector<CellOf<T>> data_;
};

template <typename T> using Table1 = Table<T, 1>;
template <typename T> using Table2 = Table<T, 2>;
template <typename T> using Table3 = Table<T, 3>;

}  // namespace osm
