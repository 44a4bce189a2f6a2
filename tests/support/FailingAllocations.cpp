// Linked into tests that let allocations fail: AddressSanitizer returns a null pointer for them instead of
// ending the process, and has the limit of its own that ResourceLimit::ofMemory mentions.

extern "C" const char *__asan_default_options();
extern "C" const char *__asan_default_options()
{
    return "allocator_may_return_null=1:max_allocation_size_mb=1024";
}
