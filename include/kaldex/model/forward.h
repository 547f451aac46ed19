#ifndef KALDEX_MODEL_FORWARD_H
#define KALDEX_MODEL_FORWARD_H

// Forward declarations of the domain model, for headers that only pass pointers and references on.

inline namespace kaldex_v1 {

class SObject;
class List;
class Point;
class Point2d;
class Point3d;
class Box;
class Line;
class LineList;
class SPolygon;
class Anchor;
class AnchorList;
class Vector;
class LineSet;
class PolygonSet;
class Point3dSet;
class AnchorSet;
class Restriction;
class RestrictionList;
class Color;
class GeneralVisual;
class Entitie;
class EntitieList;
class EText;
class Text;
class Project;
class InfoLayer;
class Category;
class CategoryList;
class GeoClass;
class GeoClassList;
class KaldexObject;
class SField;
class SFieldList;
class SCell;
class SCellList;
class DbfImpExp;
class DataBase;
class DBTransactionBlock;
class RecordSet;
class SProjection;
class GeneralProjection;
class SProjectionList;
class Datum;
class DatumList;
class SError;
class SMessageBox;
class SException;
class STime;

}  // namespace kaldex_v1

#endif
