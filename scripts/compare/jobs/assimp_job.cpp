#include <assimp/Exporter.hpp>
#include <assimp/Importer.hpp>
#include <assimp/scene.h>
#include <cstdio>

namespace {

float moved(float coordinate, double scale, double offset)
{
    return static_cast<float>(scale * coordinate + offset);
}

void move(aiMesh &mesh)
{
    for (unsigned i = 0; i < mesh.mNumVertices; ++i) {
        aiVector3D &point = mesh.mVertices[i];
        point.Set(moved(point.x, 1.5, 1.0), moved(point.y, 2.0, 2.0), moved(point.z, 0.5, 3.0));
        if (!mesh.HasNormals())
            continue;
        aiVector3D &normal = mesh.mNormals[i];
        normal.Set(normal.x / 1.5F, normal.y / 2.0F, normal.z / 0.5F);
        normal.NormalizeSafe();
    }
}

} // namespace

int main()
{
    Assimp::Importer importer;
    importer.ReadFile("in.stl", 0);
    aiScene *const scene = importer.GetOrphanedScene();
    if (scene == nullptr) {
        std::fprintf(stderr, "%s\n", importer.GetErrorString());
        return 1;
    }
    for (unsigned i = 0; i < scene->mNumMeshes; ++i)
        move(*scene->mMeshes[i]);
    Assimp::Exporter exporter;
    const bool written = exporter.Export(scene, "stl", "out.stl") == aiReturn_SUCCESS;
    delete scene;
    return written ? 0 : 1;
}
