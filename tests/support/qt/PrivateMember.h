// Reaches a private member that a class shows in no other way, without a door for tests in the class.
//
// Legal: the language does not check access to the names in an explicit instantiation, so a template may be
// given the address of a private member there, and a friend of the template hands that address out. Tag and
// friend must lie in the same namespace, the global one:
//
//     struct Count {
//         using Pointer = int Shelf::*;
//         friend Pointer pointerTo(Count);
//     };
//     template struct PrivateMember<Count, &Shelf::count>;
//
//     shelf.*pointerTo(Count{})
#pragma once

template <typename Tag, typename Tag::Pointer member>
struct PrivateMember {
    friend typename Tag::Pointer pointerTo(Tag) { return member; }
};
