#include "cli/Publication.h"

#include "cli/Complaints.h"
#include "cli/PrivateFolder.h"

#include <filesystem>
#include <memory>

namespace fs = std::filesystem;

namespace {

constexpr const char *existsAlready = "exists already; --force replaces it";

void keepPermissionsOf(const fs::path &old, const fs::path &file)
{
    std::error_code ignored; // a file without them is better than none
    const fs::file_status status = fs::status(old, ignored);
    if (fs::is_regular_file(status))
        fs::permissions(file, status.permissions(), ignored);
}

// A link to an existing file fails, so two runs that want the same name cannot both get it. Not every file
// system has such links; then the name is looked at and taken in two steps.
std::error_code moveToFreeName(const fs::path &from, const fs::path &to)
{
    std::error_code error;
    fs::create_hard_link(from, to, error);
    if (!error) {
        fs::remove(from, error);
        return {};
    }
    if (error == std::errc::file_exists || error == std::errc::cross_device_link)
        return error;
    if (fs::exists(fs::symlink_status(to)))
        return std::make_error_code(std::errc::file_exists);
    fs::rename(from, to, error);
    return error;
}

std::error_code giveName(const fs::path &from, const fs::path &to, bool force)
{
    if (!force)
        return moveToFreeName(from, to);
    keepPermissionsOf(to, from);
    std::error_code error;
    fs::rename(from, to, error);
    return error;
}

// From another file system: first the whole file beside its place.
std::error_code copyAndMove(const fs::path &from, const fs::path &to, bool force)
{
    const PrivateFolder beside(to.parent_path().string());
    const std::string copied = beside.file(privateOutputName);
    std::error_code error;
    fs::copy_file(from, copied, error);
    return error ? error : giveName(copied, to, force);
}

} // namespace

std::string placeForFile(const std::string &file, bool force)
{
    std::error_code error;
    const fs::path place = fs::weakly_canonical(fs::absolute(file), error);
    if (error)
        throw Failure(file, error.message());
    const fs::file_status status = fs::status(place, error);
    if (fs::is_directory(status))
        throw Failure(file, "is a folder");
    if (fs::exists(status) && !fs::is_regular_file(status))
        throw Failure(file, "is no file that could be replaced");
    if (fs::exists(status) && !force)
        throw Failure(file, existsAlready);
    if (place.filename().empty() || !fs::is_directory(place.parent_path(), error))
        throw Failure(file, "there is no such folder");
    return place.string();
}

Publication::~Publication()
{
    std::error_code ignored;
    for (const std::string &name : m_new)
        fs::remove(name, ignored);
}

void Publication::publish(const std::string &from, const std::string &place, const std::string &file)
{
    const bool isNew = !fs::exists(fs::symlink_status(place));
    std::error_code error = giveName(from, place, m_force);
    if (error == std::errc::cross_device_link)
        error = copyAndMove(from, place, m_force);
    if (error == std::errc::file_exists)
        throw Failure(file, existsAlready);
    if (error)
        throw Failure(file, error.message());
    if (isNew)
        m_new.push_back(place);
}
