#include "cli/Publication.h"

#include "cli/Complaints.h"
#include "cli/FileNames.h"

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

// Within a file system or from another one.
std::error_code moveAnywhere(const fs::path &from, const fs::path &to)
{
    std::error_code error;
    fs::rename(from, to, error);
    if (error != std::errc::cross_device_link)
        return error;
    fs::copy_file(from, to, error);
    return error;
}

[[noreturn]] void fail(const std::string &file, const std::error_code &error)
{
    throw Failure(file, error == std::errc::file_exists ? existsAlready : error.message());
}

} // namespace

std::string placeForFile(const std::string &file, bool force)
{
    std::error_code error;
    const fs::path place = fs::weakly_canonical(fs::absolute(pathOf(file)), error);
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
    return fileName(place);
}

void Publication::stage(const std::string &from, const std::string &place, const std::string &file)
{
    Staged staged;
    staged.from = pathOf(from);
    staged.place = pathOf(place);
    staged.file = file;
    const fs::path target = staged.place.parent_path();
    if (staged.from.parent_path().parent_path() != target) {
        staged.folder = std::make_unique<PrivateFolder>(fileName(target));
        const fs::path beside = pathOf(staged.folder->file(privateOutputName));
        const std::error_code error = moveAnywhere(staged.from, beside);
        if (error)
            fail(file, error);
        staged.from = beside;
    }
    m_staged.push_back(std::move(staged));
}

void Publication::publish()
{
    for (Staged &staged : m_staged) {
        staged.isNew = !fs::exists(fs::symlink_status(staged.place));
        const std::error_code error = giveName(staged.from, staged.place, m_force);
        if (error) {
            withdraw(staged);
            fail(staged.file, error);
        }
    }
}

void Publication::withdraw(const Staged &failed)
{
    for (const Staged &staged : m_staged) {
        if (&staged == &failed)
            return;
        std::error_code ignored;
        if (staged.isNew)
            fs::remove(staged.place, ignored);
    }
}
