// The debugging text of the nodes: one line each, children two blanks
// further in.
#include "rex/node.h"
#include "rex/token.h"

namespace {
void indentBy(LStr& out, int32_t indent) {
  for (int32_t i = 0; i < indent; i++) out.append("  ");
}
}  // namespace

void URexBin::dump(LStr& out, int32_t indent) const {
  indentBy(out, indent);
  out.append("tree\n");
  left->dump(out, indent + 1);
  right->dump(out, indent + 1);
}

void URexFlat::dump(LStr& out, int32_t indent) const {
  indentBy(out, indent);
  out.append("flat:");
  out.append(FRexNarrow(text.ptr, text.length));
  out.append('\n');
}

void URexCharSet::dump(LStr& out, int32_t indent) const {
  indentBy(out, indent);
  out.append("char set: ");
  for (int32_t i = 0; i < items.count; i++) {
    const LIntPair* item = items[i];
    if (i > 0) out.append(' ');
    if (item->value == 0)
      out.format("%X", static_cast<unsigned>(item->key));
    else
      out.format("%X-%X", static_cast<unsigned>(item->key), static_cast<unsigned>(item->value));
  }
  if (exclude) out.append(" (exclude)");
  out.append('\n');
}

void URexSpChar::dump(LStr& out, int32_t indent) const {
  indentBy(out, indent);
  switch (kind) {
    case kRexKindLineTop:
      out.append("line-top\n");
      break;
    case kRexKindLineEnd:
      out.append("line-end\n");
      break;
    case kRexKindWordEdge:
      out.append("word\n");
      break;
    default:
      out.append("(unknown)\n");
  }
}

void URexRepeat::dump(LStr& out, int32_t indent) const {
  indentBy(out, indent);
  out.format("repeat [%d] - [%d]\n", min, max);
  child->dump(out, indent + 1);
}

void URexStt::dump(LStr& out, int32_t indent) const {
  indentBy(out, indent);
  out.append(negate ? "not" : "equ");
  out.format("%s\n", behind ? " behind" : "");
  child->dump(out, indent + 1);
}

void URexBrace::dump(LStr& out, int32_t indent) const {
  indentBy(out, indent);
  out.append("brace\n");
  child->dump(out, indent + 1);
}

void URexAnd::dump(LStr& out, int32_t indent) const {
  indentBy(out, indent);
  out.format("%s (num=%d)\n", name(), items.count);
  for (const URex* item : items) item->dump(out, indent + 1);
}

void URexEmpty::dump(LStr& out, int32_t indent) const {
  indentBy(out, indent);
  out.append("empty\n");
}
