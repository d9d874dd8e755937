#pragma once

// Rows have gone from the open table. If the one marked last was among them, the one marked before it takes its place;
// nothing is written otherwise. The cursor stays. In the caller's transaction, if there is one.
void Promote_Anchor();
