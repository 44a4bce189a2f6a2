#include "tests/app/WindowTest.h"

#include "tests/app/SmallMesh.h"

void WindowTest::init()
{
    m_folder = std::make_unique<WorkingFolder>();
    m_folder->write("in.stl", triangleInput());
    m_boxes = std::make_unique<MessageBoxRecorder>();
    m = std::make_unique<WindowUnderTest>();
}

void WindowTest::cleanup()
{
    m.reset();
    m_boxes.reset();
    m_folder.reset();
}
