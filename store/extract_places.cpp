#include "store/extract_places.h"

#include "lib/lstr.h"
#include "lib/sys.h"

const TRec* TExtractPlaces::claim(int32_t parent, const char* name, const TRec* owner,
                                  int32_t* place) {
  LStr nameKey;
  SysPathKey(name, nameKey);
  std::string key(reinterpret_cast<const char*>(&parent), sizeof parent);
  key.append(nameKey.ptr, nameKey.length);
  auto found = places_.emplace(key, Place{static_cast<int32_t>(places_.size()), owner});
  const Place& taken = found.first->second;
  if (taken.owner != owner) return taken.owner;
  *place = taken.id;
  return nullptr;
}
