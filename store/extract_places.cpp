#include "store/extract_places.h"

#include <cstring>

#include "lib/strfunc.h"
#include "lib/sys.h"

const TRec* TExtractPlaces::claim(const char* relative, const TRec* owner) {
  LStr key;
  SysPathKey(relative, key);
  intptr_t found = index_.findStr(key.ptr, [](intptr_t element, const void* wanted) {
    const Place* place =
        reinterpret_cast<const Place*>(reinterpret_cast<LIntPair*>(element)->value);
    return std::strcmp(place->key.ptr, static_cast<const char*>(wanted));
  });
  if (found != 0) {
    const Place* place = reinterpret_cast<const Place*>(reinterpret_cast<LIntPair*>(found)->value);
    return place->owner == owner ? nullptr : place->owner;
  }
  Place* place = new Place{key, owner};
  places_.add(place);
  // The pair's key is the text's hash, so that findStr looks in its bucket.
  index_.addPair(static_cast<intptr_t>(FHashStr(key.ptr)), reinterpret_cast<intptr_t>(place));
  return nullptr;
}
