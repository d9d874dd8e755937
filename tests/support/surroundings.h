#pragma once

// Before the application object of a test program is made: offscreen unless a platform is asked for, no scaling, German
// as on the user's desktop, numbers of the C library with a point.
void Set_Test_Surroundings();
