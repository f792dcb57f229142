#pragma once

#include <QListWidget>
#include <string>

namespace partitioner {

// Entries whose columns are made with blanks. They stand below each other although the font has letters of
// many widths: behind two blanks and more a text begins at its place on a grid.
class EntryList : public QListWidget {
  public:
    EntryList(const std::string& name, int characters);  // wide enough for so many

    void Add(const std::string& entry);
    std::string Selected() const;     // empty for none
    int Width(int characters) const;  // of the grid, in pixels
    int Margin() const;               // in pixels, left of the first character
};

}  // namespace partitioner
