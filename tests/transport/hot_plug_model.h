// SPDX-License-Identifier: MIT
// A second, plain account of the device table under arrivals, removals and the closing of gaps.
#pragma once

#include <algorithm>
#include <array>
#include <cstdint>
#include <set>
#include <string>

struct CPort;

namespace zel::test {

using HandleNumber = std::uintptr_t;
constexpr HandleNumber kHole = UINTPTR_MAX;

struct TableRow {
    HandleNumber handle = kHole;
    std::string name;
    const CPort* port = nullptr;
};

struct TableModel {
    static constexpr int kMost = 127;

    std::array<TableRow, kMost> rows;
    int count = 0;
    int active = 0;
    std::set<HandleNumber> open;

    TableRow& row(int index) { return rows[static_cast<std::size_t>(index)]; }

    // A handle that leaves a row closes when no other row holds it.
    void leave(HandleNumber handle) {
        if (std::none_of(rows.begin(), rows.end(),
                         [=](const TableRow& other) { return other.handle == handle; }))
            open.erase(handle);
    }
    void put(TableRow& row, HandleNumber handle) {
        const HandleNumber old = row.handle;
        row.handle = handle;
        leave(old);
    }

    int removeFirst() {
        for (int i = 0; i < count; ++i) {
            if (row(i).handle == kHole)
                continue;
            const HandleNumber closed = row(i).handle;
            open.erase(closed);
            for (TableRow& other : rows)
                if (other.handle == closed)
                    other.handle = 0;
            row(i) = {};
            return 1;
        }
        return 0;
    }

    int add(const TableRow& record) {
        if (count >= kMost)
            return 0;
        const TableRow copy = record;
        const HandleNumber old = row(count).handle;
        row(count++) = copy;
        leave(old);
        return 1;
    }

    // Passes from the front until there is no hole, or the last one stands at the end.
    void compact() {
        while (count != 0) {
            int hole = count;
            int holes = 0;
            for (int i = 0; i < count; ++i) {
                if (row(i).handle == kHole) {
                    hole = i;
                    ++holes;
                } else if (hole < count) {
                    row(hole) = row(i);
                    hole = i;
                }
            }
            if (holes == 0)
                return;
            if (hole == count - 1) {
                --count;
                return;
            }
        }
    }

    int reset(const TableRow* record, bool remove) {
        const int result = !record ? 0 : remove ? removeFirst() : add(*record);
        compact();
        active = 0;
        return result;
    }

    static std::string inSmallLetters(std::string text) {
        for (char& c : text)
            c = c >= 'A' && c <= 'Z' ? static_cast<char>(c + 'a' - 'A') : c;
        return text;
    }

    int remove(const std::string& name) {
        for (int i = 0; i < count; ++i)
            if (inSmallLetters(row(i).name) == inSmallLetters(name))
                return reset(&row(i), true);
        return 0;
    }

    int arrive(const std::string& name) {
        const TableRow record = {0, name, nullptr};
        return reset(&record, false);
    }

    int arriveSensor(const std::string& name) {
        put(row(0), 0);
        row(0).name = name;
        const TableRow empty = {0, "", nullptr};
        return reset(&empty, false);
    }

    // A scan hands over a device for the record `place`.
    bool take(int place, const std::string& name, HandleNumber handle) {
        if (place >= kMost || count >= kMost)
            return false;
        open.insert(handle);
        put(row(place), handle);
        row(place).name = name;
        ++count;
        return true;
    }
};

} // namespace zel::test
