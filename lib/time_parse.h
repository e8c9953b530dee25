// Reading a date and time typed by the user, in local time, into a calendar
// time (seconds since 1970 UTC). A part left out is taken from today; with
// `upper` the result is the end of a range, so a missing time is the last
// second of the day and missing seconds are 59. Bad text reports 15000 (in
// the language of FLang where the message has two) and gives -1.
#pragma once

#include <cstdint>

// "[[yy]mmdd][.hhmm[ss]]": a year below 50 is 20yy, others 19yy.
int64_t FParseShortTime(const char* text, bool upper);
// "yyyy/mm/dd.hh:mm:ss", where the year may be left out ("mm/dd") or
// written with two digits, the seconds may be left out, and either the date
// or the time may stand alone.
int64_t FParseLongTime(const char* text, bool upper);
// Either form: a text with "/" or ":" is read as the long form.
int64_t FParseTime(const char* text, bool upper);
