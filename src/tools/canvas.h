#pragma once

// Makes view, hand and tools hear each other and the rooms below them. Once at the program's start; once more does no
// harm.
void Connect_Canvas();
