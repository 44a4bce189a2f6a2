// Gives a test access to a private member of a class that makes no provision for tests.
//
// This is legal: names in an explicit instantiation are not checked for access, so it can pass the address of
// a private member to a template, and a friend of the template returns that address. The tag and its friend
// must be declared in the global namespace:
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
