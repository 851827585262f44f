// Profile services of the studio. Entities refer to profiles of the project library: the
// profiles editor creates and changes profiles there.
#include "StudioProfilesInfo.h"

#include <algorithm>
#include <cwctype>

#include <OdEdSettingsManager.h>

#include "DrawingOutlines.h"
#include <section/SectionGeometry.h>
#include <vantlib/Exception.h>
#include <vl_db/DocumentLibraries.h>
#include <vl_db/Profiles.h>

namespace {

OdArray<OdDbObjectId> toArray(const std::vector<OdDbObjectId>& ids) {
    OdArray<OdDbObjectId> result;
    for (const OdDbObjectId& id : ids)
        result.append(id);
    return result;
}

std::vector<OdDbObjectId> toVector(const OdArray<OdDbObjectId>& ids) {
    std::vector<OdDbObjectId> result;
    for (unsigned i = 0; i < ids.size(); ++i)
        result.push_back(ids[i]);
    return result;
}

// Geometry of a profile that makes no section is empty rather than an error: the editor asks
// while the user is still typing the dimensions.
bool sectionOf(const vantlib::Profile& profile, section::SectionProperties& result) {
    if (!section::isValidSection(profile))
        return false;
    result = section::properties(profile);
    return true;
}

std::wstring folded(const OdString& text) {
    std::wstring result(text.c_str());
    std::transform(result.begin(), result.end(), result.begin(), [](wchar_t c) { return wchar_t(std::towlower(c)); });
    return result;
}

std::wstring trimmed(const std::wstring& text) {
    const size_t first = text.find_first_not_of(L" \t");
    if (first == std::wstring::npos)
        return std::wstring();
    return text.substr(first, text.find_last_not_of(L" \t") - first + 1);
}

}  // namespace

std::vector<OdString> profileStandardList(const OdString& setting) {
    std::vector<OdString> result;
    std::vector<std::wstring> seen;
    std::wstring entry;
    const std::wstring text = std::wstring(setting.c_str()) + L";";
    for (wchar_t c : text) {
        if (c != L';' && c != L',') {
            entry += c;
            continue;
        }
        entry = trimmed(entry);
        const std::wstring key = folded(OdString(entry.c_str()));
        if (!entry.empty() && std::find(seen.begin(), seen.end(), key) == seen.end()) {
            seen.push_back(key);
            result.push_back(OdString(entry.c_str()));
        }
        entry.clear();
    }
    return result;
}

std::set<OdString> matchProfileStandards(const std::set<OdString>& allowed, const std::vector<OdString>& available) {
    std::set<OdString> result;
    for (const OdString& entry : allowed) {
        const std::wstring wanted = folded(entry);
        for (const OdString& name : available) {
            const std::wstring candidate = folded(name);
            if (candidate == wanted || (candidate.size() > wanted.size() && candidate.compare(0, wanted.size(), wanted) == 0 &&
                                        candidate[wanted.size()] == L' '))
                result.insert(name);
        }
    }
    return result;
}

void StudioProfilesInfo::findProfileId(OdDbDatabase& db, unsigned profileId, OdArray<OdDbObjectId>& entities) {
    entities = toArray(vl_db::findProfileId(db, vl_db::kDbProject, profileId));
}

void StudioProfilesInfo::removeProfileId(const OdArray<OdDbObjectId>& entities) {
    for (unsigned i = 0; i < entities.size(); ++i) {
        OdSmartPtr<OdDbEntity> entity = OdDbEntity::cast(entities[i].safeOpenObject(OdDb::kForWrite).get());
        if (!entity)
            continue;
        std::vector<OdDbLibraryReference> kept;
        for (const OdDbLibraryReference& reference : entity->libraryReferences())
            if (reference.objectType != vantlib::kConstructionProfile)
                kept.push_back(reference);
        entity->setLibraryReferences(kept);
    }
}

void StudioProfilesInfo::removeProfileId(OdDbDatabase& db, unsigned profileId, OdArray<OdDbObjectId>& entities) {
    entities = toArray(vl_db::removeProfileId(db, vl_db::kDbProject, profileId));
}

void StudioProfilesInfo::applyProfile(const QcSmartPtr<vantlib::Profile>& profile, const OdArray<OdDbObjectId>& entities) {
    // The studio's entities keep nothing of a profile but the reference and its full name.
    if (profile)
        vl_db::setProfileId(toVector(entities), vl_db::kDbProject, profile->id(), vl_db::fullProfileName(*profile));
}

void StudioProfilesInfo::setProfileId(unsigned profileId, const OdArray<OdDbObjectId>& entities) {
    if (entities.isEmpty())
        return;
    OdDbDatabase* db = entities[0].database();
    const auto library = db ? vl_db::docLibs(db)->primary(false) : std::shared_ptr<vantlib::Library>();
    const QcSmartPtr<vantlib::Profile> profile = library ? library->get<vantlib::Profile>(profileId)
                                                          : QcSmartPtr<vantlib::Profile>();
    if (!profile)
        throw vantlib::ConsistencyError(OdString::formatted(L"The project library has no profile %u", profileId));
    vl_db::setProfileId(toVector(entities), vl_db::kDbProject, profileId, vl_db::fullProfileName(*profile));
}

double StudioProfilesInfo::getProfileArea(OdDbDatabase&, const vantlib::Profile& profile) {
    section::SectionProperties p;
    return sectionOf(profile, p) ? p.area : 0.0;
}

double StudioProfilesInfo::getProfileGrossArea(OdDbDatabase&, const vantlib::Profile& profile) {
    section::SectionProperties p;
    return sectionOf(profile, p) ? p.grossArea : 0.0;
}

CustomProfileInfo StudioProfilesInfo::getProfileFromGeometricSel(OdDb::UnitsValue unit) {
    CustomProfileInfo result;
    const std::vector<OdDbObjectId> picked = m_pickOutline ? m_pickOutline() : std::vector<OdDbObjectId>();
    if (picked.empty())
        return result;
    for (const OdDbObjectId& id : picked)
        result.entities.append(OdDbEntity::cast(id.safeOpenObject().get()));
    OdDbDatabase* db = picked.front().database();
    const OdDb::UnitsValue drawingUnit = db ? db->getINSUNITS() : OdDb::kUnitsUndefined;
    result.unit = unit == OdDb::kUnitsUndefined ? drawingUnit : unit;
    const double scale = drawingUnit == OdDb::kUnitsUndefined || unit == OdDb::kUnitsUndefined
                             ? 1.0
                             : oddbGetUnitsConversion(drawingUnit, unit);
    result.profile = vantlib::CustomProfile::create(QcSmartPtr<vantlib::ProfileName>(), OdString());
    result.profile->set_geometry(outlines::profileGeometry(result.entities, scale));
    const section::Extents extents = section::loopExtents(result.profile->geometry().outer);
    result.width = extents.width();
    result.height = extents.height();
    return result;
}

QcSmartPtr<vantlib::Profile> StudioProfilesInfo::getVantlibProfileFromGeometricSel(OdDb::UnitsValue unit) {
    return QcSmartPtr<vantlib::Profile>(getProfileFromGeometricSel(unit).profile.get());
}

OdArray<OdSmartPtr<OdDbEntity>> StudioProfilesInfo::getProfileEntityArr(OdDbDatabase&, const vantlib::Profile& profile) {
    if (!section::isValidSection(profile))
        return OdArray<OdSmartPtr<OdDbEntity>>();
    return outlines::outlineEntities(section::outline(profile));
}

OdArray<OdSmartPtr<OdDbEntity>> StudioProfilesInfo::getRotatedProfileEntityArr(OdDbDatabase&, vantlib::CustomProfile& profile,
                                                                               bool left) {
    profile.set_geometry(section::turned(profile.geometry(), left));
    return outlines::outlineEntities(profile.geometry());
}

OdArray<OdSmartPtr<OdDbEntity>> StudioProfilesInfo::getMirroredProfileEntityArr(OdDbDatabase&, vantlib::CustomProfile& profile,
                                                                                bool horizontal) {
    profile.set_geometry(section::mirrored(profile.geometry(), horizontal));
    return outlines::outlineEntities(profile.geometry());
}

bool StudioProfilesInfo::findInDB(OdDbDatabase& db, const vantlib::Profile& profile, OdDb::UnitsValue unit,
                                  std::vector<QcSmartPtr<vantlib::Profile>>& matches) {
    matches.clear();
    if (!section::isValidSection(profile))
        return false;
    vl_db::DocumentLibraries* libs = vl_db::docLibs(&db);
    vantlib::ProfilesPanelQuery sameClass;
    sameClass.className = profile.isA().className();
    for (const auto& library : {std::shared_ptr<const vantlib::Library>(libs->primary()),
                                std::shared_ptr<const vantlib::Library>(libs->secondary())}) {
        if (!library)
            continue;
        // Lengths of the library in the unit of the profile's dimensions.
        const double scale = unit == OdDb::kUnitsUndefined || library->unit() == OdDb::kUnitsUndefined
                                 ? 1.0
                                 : oddbGetUnitsConversion(library->unit(), unit);
        std::vector<QcSmartPtr<vantlib::Profile>> candidates;
        library->get(candidates, sameClass);
        for (const auto& candidate : candidates)
            if (section::isValidSection(*candidate) && section::sameSection(profile, *candidate, scale))
                matches.push_back(candidate);
    }
    return !matches.empty();
}

std::pair<double, double> StudioProfilesInfo::getProfileDims(const vantlib::Profile& profile) {
    section::SectionProperties p;
    if (!sectionOf(profile, p))
        return {0.0, 0.0};
    return {p.extents.width(), p.extents.height()};
}

vantlib::Vector2d StudioProfilesInfo::toCentroid(const vantlib::Profile& profile) {
    section::SectionProperties p;
    return sectionOf(profile, p) ? p.centroid : vantlib::Vector2d();
}

void StudioProfilesInfo::getAllowedProfileStandards(std::set<OdString>& standards) {
    const std::vector<OdString> listed = profileStandardList(OdEdSettingsManager::instance().getString(L"BIMPROFILESTANDARDS"));
    standards = std::set<OdString>(listed.begin(), listed.end());
}

bool StudioProfilesInfo::expandProfileStandards(OdDbDatabase* db, std::set<OdString>& standards) {
    std::vector<OdString> available;
    if (db) {
        vl_db::DocumentLibraries* libs = vl_db::docLibs(db);
        for (const auto& library : {std::shared_ptr<const vantlib::Library>(libs->primary()),
                                    std::shared_ptr<const vantlib::Library>(libs->secondary())}) {
            if (!library)
                continue;
            std::vector<QcSmartPtr<vantlib::ProfileStandard>> found;
            library->get(found);
            for (const auto& standard : found)
                available.push_back(standard->name());
        }
    }
    standards = matchProfileStandards(standards, available);
    return !standards.empty();
}

bool StudioProfilesInfo::isValidProfile(const vantlib::Profile& profile) { return section::isValidSection(profile); }
