#include "ui/date_pick.h"

#include "archive/stats.h"

namespace {
// A time that has no local form starts the picker at the epoch's day.
void localSide(int64_t time, TDateSide& side) {
  side = TDateSide();
  if (!FLocalFields(time, side.at)) FLocalFields(0, side.at);
}

}  // namespace

bool FDateRangeStart(const TStats* stats, int64_t now, TDateSide& low, TDateSide& high) {
  if (stats == nullptr || stats->versions == 0) {
    localSide(now, low);
    low.at.hour = low.at.minute = low.at.second = 0;
    high = low;
    high.at.hour = 23;
    high.at.minute = high.at.second = 59;
    return true;
  }
  localSide(stats->timeMin, low);
  localSide(stats->timeMax, high);
  return stats->timeMin <= stats->timeMax;
}

LStr FDateSideText(const TDateSide& side) {
  LStr text;
  text.format("%02d/%02d/%02d", side.at.year % 100, side.at.month, side.at.day);
  if (side.withTime != 0)
    text.format(".%02d:%02d:%02d", side.at.hour, side.at.minute, side.at.second);
  return text;
}

LStr FDateRangeText(const TDateSide& low, const TDateSide& high) {
  LStr text = FDateSideText(low);
  text.append("-").append(FDateSideText(high));
  return text;
}
