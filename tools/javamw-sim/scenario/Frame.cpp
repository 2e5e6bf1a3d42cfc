// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#include "scenario/Frame.h"

#include <algorithm>
#include <iterator>
#include <random>
#include <string>
#include <string_view>

namespace applist::sim {
namespace {

constexpr std::string_view PLACE_OF_NUMBER = "{n}";
constexpr size_t ID_SIZE = 4;

std::string Numbered(std::string text, const std::string& number) {
    size_t place = 0;
    while ((place = text.find(PLACE_OF_NUMBER, place)) != std::string::npos) {
        text.replace(place, PLACE_OF_NUMBER.size(), number);
        place += number.size();
    }
    return text;
}

/// Encodes one copy.
class Encoder {
public:
    explicit Encoder(unsigned copy) : m_copy(copy) {}

    Bytes operator()(const RegularFrame& frame) const {
        const std::string number = std::to_string(m_copy);
        Items items;
        std::transform(frame.items.begin(), frame.items.end(), std::back_inserter(items),
                       [&](const Item& item) {
                           return Item{Numbered(item.id, number), Numbered(item.name, number)};
                       });
        return EncodeCall(frame.function, items);
    }

    Bytes operator()(const RawFrame& frame) const { return frame.bytes; }

    Bytes operator()(const HugeFrame& frame) const {
        Bytes bytes(std::max(frame.size, ID_SIZE) - ID_SIZE, '\xFF');
        const Bytes id = EncodeCall(frame.function, {});
        bytes.insert(bytes.end(), id.begin(), id.end());
        return bytes;
    }

    // The engine is portable, but the distributions of the library are not.
    Bytes operator()(const FlippedFrame& frame) const {
        Bytes bytes = (*this)(frame.call);
        std::mt19937 engine(frame.seed + m_copy - 1);
        for (unsigned i = 0; i < frame.bits; ++i) {
            const size_t bit = engine() % (bytes.size() * 8);
            bytes[bit / 8] =
                static_cast<char>(static_cast<uint8_t>(bytes[bit / 8]) ^ (1U << bit % 8));
        }
        return bytes;
    }

    Bytes operator()(const CutFrame& frame) const {
        Bytes bytes = (*this)(frame.call);
        const size_t size = std::min(frame.payloadSize, bytes.size() - ID_SIZE);
        bytes.erase(bytes.begin() + static_cast<Bytes::difference_type>(size),
                    bytes.end() - ID_SIZE);
        return bytes;
    }

private:
    unsigned m_copy;
};

}  // namespace

Bytes BytesOf(const Frame& frame, unsigned copy) {
    return std::visit(Encoder(copy), frame);
}

}  // namespace applist::sim
