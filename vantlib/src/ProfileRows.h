#pragma once
// Rows of the profile kinds: their columns, how a row becomes an object and back, and the
// JSON text of a profile's dimensions and custom outline.
#include <string>
#include <string_view>
#include <vector>

#include <vantlib/Profile.h>

#include "Statement.h"

namespace vantlib {

const std::vector<std::string>& profileNameColumns();
bool readProfileNameRow(const Statement& row, Object& name);
void bindProfileNameRow(Statement& stmt, const Object& name);

const std::vector<std::string>& profileColumns();
// The object of the row's class; null for a class this version does not know.
QcSmartPtr<Object> createProfileFromRow(const Statement& row);
bool readProfileRow(const Statement& row, Object& profile);
void bindProfileRow(Statement& stmt, const Object& profile);

std::string parametersToJson(const Profile& profile);
// False for text that is not such an object or names a dimension the class lacks.
bool parametersFromJson(std::string_view json, Profile& profile);
std::string geometryToJson(const ProfileGeometry& geometry);
bool geometryFromJson(std::string_view json, ProfileGeometry& geometry);

}  // namespace vantlib
