// One row of the drive list: a mounted volume that may be searched.
//
// A plain record without locks; one thread at a time.
#pragma once

#include <map>
#include <utility>

#include "util/Text.h"

namespace norvo {

// The six texts stand in the order of the table's columns. A text that the disk report did not have
// is empty; numbers are decimal digits.
struct MyDataObject {
  Text nsStrDiskIdentifier;  // a name that the system's raw_node() takes, such as sdb1
  Text nsStrVolName;         // as the volume has it: show it with displayable()
  Text nsStrFileSystem;
  Text nsStrSize;        // as getMPSize() writes it
  Text nsStrParentDisk;  // identifier of the whole disk
  Text nsStrSectors;     // whole sectors of 512 bytes

  const MyDataObject* parent = nullptr;  // not owned; the drive list leaves it alone
  std::map<Text, Text> root;             // the drive list leaves it empty

  // A record with the six texts in their order.
  static MyDataObject initWithString1(Text string1, Text string2, Text string3, Text string4,
                                      Text string5, Text string6) {
    MyDataObject object;
    object.nsStrDiskIdentifier = std::move(string1);
    object.nsStrVolName = std::move(string2);
    object.nsStrFileSystem = std::move(string3);
    object.nsStrSize = std::move(string4);
    object.nsStrParentDisk = std::move(string5);
    object.nsStrSectors = std::move(string6);
    return object;
  }

  // An empty record that points to `parent`, which must outlive it.
  static MyDataObject weakReferenceWithParent(const MyDataObject& parent) {
    MyDataObject object;
    object.parent = &parent;
    return object;
  }

  bool operator==(const MyDataObject&) const = default;
};

}  // namespace norvo
