#pragma once

#include <cstdint>
#include <cstring>
#include <string_view>

// What the program `jetreader` writes on its standard output: the tables of a Jet file, one after the other,
// as items. An item is a byte that tells its kind, the length of its text as 32 bits of the host's order, its
// text.
namespace platform::jetreader {

enum class ItemKind : char {
    Table = 'T',         // its name; then its columns, then its rows
    NumberColumn = 'I',  // the name of a column of integers
    TextColumn = 'C',
    Value = 'V',  // the fields of a row in the order of the columns
    Null = 'N',
    End = 'E',    // the last item: without it something is missing
    Fault = 'X',  // why the file can't be read; nothing follows
};

constexpr std::size_t ItemHead = 1 + sizeof(std::uint32_t);

struct Item {
    ItemKind Kind;
    std::string_view Text;
};

// Takes the next item off the bytes. False if they hold no whole one.
inline bool TakeItem(std::string_view& bytes, Item& item) {
    if (bytes.size() < ItemHead) return false;
    std::uint32_t length = 0;
    std::memcpy(&length, bytes.data() + 1, sizeof length);
    if (bytes.size() - ItemHead < length) return false;
    item = {static_cast<ItemKind>(bytes.front()), bytes.substr(ItemHead, length)};
    bytes.remove_prefix(ItemHead + length);
    return true;
}

}  // namespace platform::jetreader
