// The fixed name tables of the object classes, kept as plain data in
// data/name_tables.txt: the folder words of the attachment stores, the
// names of the major bodies, and the browser's groups. The display lists
// (filter, class names and columns, object types) are strings of the
// string table.
#pragma once

inline constexpr int kFolderWordRows = 13, kFolderWordSize = 19;
inline constexpr int kBodyNameRows = 12, kBodyNameSize = 13;
inline constexpr int kBrowserGroupRows = 9, kBrowserGroupSize = 18;

// The row's text; "" outside the table.
const char* folderWord(int row);
const char* bodyName(int row);
const char* browserGroupName(int row);
