#pragma once

// Finds and fills the program folder (store/file_names.h) from the one as delivered. False if it cannot be made; that
// was told.
bool Prepare_Folder();
