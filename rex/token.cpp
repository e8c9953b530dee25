#include "rex/token.h"

#include "lib/convert.h"
#include "lib/lstr.h"
#include "lib/msg.h"

namespace {
typedef const char16_t* TokenTable[kRexTokenCount];

const TokenTable kPlainTokens = {
    u"|", u"&", u"*", u"+", u"?", u"-", u"[", u"]", u"(", u")", u"^", u"$", u"^", u"!", u"~",
};
const TokenTable kEscapedTokens = {
    u"\\|", u"\\&", u"\\*", u"\\+", u"\\?", u"\\-", u"\\[", u"\\]",
    u"\\(", u"\\)", u"\\^", u"\\$", u"^",   u"\\!", u"\\~",
};
const char16_t kWordEdge[] = u"\\w";

// The table in use; swapped only under the library-wide lock.
const TokenTable* gTokens = &kPlainTokens;

bool sameToken(const URexToken& token, const char16_t* entry) {
  int32_t i = 0;
  for (; i < token.length; i++)
    if (entry[i] == 0 || token.at[i] != entry[i]) return false;
  return entry[i] == 0;
}

int hexDigit(UChar c) {
  if (c >= '0' && c <= '9') return c - '0';
  if (c >= 'a' && c <= 'f') return c - 'a' + 10;
  if (c >= 'A' && c <= 'F') return c - 'A' + 10;
  return -1;
}

bool isOctal(UChar c) { return c >= '0' && c <= '7'; }

int32_t badEscape(const URexToken& token) {
  FMsg(kMsgGeneral, "エスケープ文字列が不正です : %s", FRexNarrow(token.at, token.length).ptr);
  return -1;
}
}  // namespace

bool URexToken::is(URexTokenId id) const { return sameToken(*this, (*gTokens)[id]); }

bool URexToken::isWordEdge() const { return sameToken(*this, kWordEdge); }

int32_t URexToken::value() const {
  if (at[0] != '\\') return at[0];
  if (length < 2) return badEscape(*this);  // a backslash that ends the pattern
  UChar c = at[1];
  if (c < '0' || c > 'x') return c;
  if (isOctal(c)) {
    if (length < 4 || !isOctal(at[2]) || !isOctal(at[3])) return badEscape(*this);
    return (c - '0') * 64 + (at[2] - '0') * 8 + (at[3] - '0');
  }
  switch (c) {
    case 'a':
      return 7;
    case 'f':
      return 12;
    case 'n':
      return 10;
    case 'r':
      return 13;
    case 't':
      return 9;
    case 'v':
      return 11;
    case 'u':
    case 'x': {
      if (length < 6) return badEscape(*this);
      int32_t code = 0;
      for (int32_t i = 2; i < 6; i++) {
        int digit = hexDigit(at[i]);
        if (digit < 0) return badEscape(*this);
        code = code * 16 + digit;
      }
      return code;
    }
    default:
      return c;
  }
}

URexToken FRexPeekToken(const UChar* cursor) {
  int32_t wanted = 1;
  if (cursor[0] == 0) {
    wanted = 0;
  } else if (cursor[0] == '\\') {
    UChar next = cursor[1];
    wanted = next == 'u' || next == 'x' ? 6 : isOctal(next) ? 4 : 2;
  }
  // An escape is cut where the pattern ends.
  int32_t length = 0;
  while (length < wanted && cursor[length] != 0) length++;
  return URexToken{cursor, length};
}

void FRexUseEscapedTokens(bool escaped) { gTokens = escaped ? &kEscapedTokens : &kPlainTokens; }

LStr FRexNarrow(const UChar* text, int32_t n) {
  LStr out;
  FToLStr(text, n, out);
  return out;
}
