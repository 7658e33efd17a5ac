// Archives (tar) that come in with a form: unpacked in a folder of their own and looked at before anybody uses them.
#pragma once

#include <string>
#include <vector>

#include "framework/plain_tree.h"

// While an object lives, what an archive holds lies below folder(), which nothing else sees. One object at a time.
//
// An archive is taken whole or not at all: it is plain, which means uncompressed, complete, and made of nothing but
// folders and plain files within the limits. Paths that climb out of it, links and devices are refused, not left out.
class UnpackedArchive {
 public:
  // Unpacks the archive at the phone's path. The limits hold while it is unpacked, too: what goes beyond them is cut
  // off, so that no archive fills the partition.
  UnpackedArchive(const std::string& archive, const TreeLimits& limits);

  // False when the archive was refused (logged); nothing of it is to be used then.
  bool isPlain() const { return isPlain_; }
  // What it holds, each folder in front of its contents. Their owner can read and write all of it.
  const std::vector<TreeEntry>& entries() const { return entries_; }
  // True when the archive holds that folder.
  bool hasFolder(std::string_view path) const;
  const std::string& folder() const { return folder_.path(); }

 private:
  WorkFolder folder_;
  std::vector<TreeEntry> entries_;
  bool isPlain_ = false;
};
