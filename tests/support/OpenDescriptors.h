// The open file descriptors of this process.
#pragma once

bool isOpen(int descriptor);
long openDescriptors();
