#include "commands/commands.h"

namespace vndk::host {

namespace {

constexpr auto kNoGroup = BuiltInCommand::Undo::None;
constexpr bool kWithoutDrawing = true;

constexpr BuiltInCommand kCommands[] = {
    {"ARC", ACRX_CMD_MODAL, arcCommand},
    {"ARX", ACRX_CMD_MODAL, arxCommand, kNoGroup, kWithoutDrawing},
    {"ATTDEF", ACRX_CMD_MODAL, attdefCommand},
    {"-ATTDEF", ACRX_CMD_MODAL, attdefCommand},
    {"BLOCK", ACRX_CMD_MODAL, blockCommand},
    {"-BLOCK", ACRX_CMD_MODAL, blockCommand},
    {"BLOCKICON", ACRX_CMD_MODAL, blockiconCommand},
    {"CHPROP", ACRX_CMD_USEPICKSET, chpropCommand},
    {"CIRCLE", ACRX_CMD_MODAL, circleCommand},
    {"CLOSE", ACRX_CMD_MODAL, closeCommand, kNoGroup},
    {"COPY", ACRX_CMD_USEPICKSET, copyCommand},
    {"DDINSERT", ACRX_CMD_MODAL, insertCommand},
    {"DIMALIGNED", ACRX_CMD_MODAL, dimAlignedCommand},
    {"DIMLINEAR", ACRX_CMD_MODAL, dimLinearCommand},
    {"EATTEDIT", ACRX_CMD_MODAL, eatteditCommand},
    {"ERASE", ACRX_CMD_USEPICKSET, eraseCommand},
    {"EXPLODE", ACRX_CMD_USEPICKSET, explodeCommand},
    {"INSERT", ACRX_CMD_MODAL, insertCommand},
    {"-INSERT", ACRX_CMD_MODAL, insertCommand},
    {"LAYER", ACRX_CMD_MODAL, layerCommand},
    {"-LAYER", ACRX_CMD_MODAL, layerCommand},
    {"LINE", ACRX_CMD_MODAL, lineCommand},
    {"LIST", ACRX_CMD_USEPICKSET, listCommand},
    {"MINSERT", ACRX_CMD_MODAL, minsertCommand},
    {"MIRROR", ACRX_CMD_USEPICKSET, mirrorCommand},
    {"MOVE", ACRX_CMD_USEPICKSET, moveCommand},
    {"NEW", ACRX_CMD_MODAL, newCommand, kNoGroup, kWithoutDrawing},
    {"OPEN", ACRX_CMD_MODAL, openCommand, kNoGroup, kWithoutDrawing},
    {"ORTHO", ACRX_CMD_TRANSPARENT, orthoCommand, kNoGroup},
    {"OSNAP", ACRX_CMD_TRANSPARENT, osnapCommand, kNoGroup},
    {"-OSNAP", ACRX_CMD_TRANSPARENT, osnapCommand, kNoGroup},
    {"PAN", ACRX_CMD_TRANSPARENT, panCommand, kNoGroup},
    {"-PAN", ACRX_CMD_TRANSPARENT, panCommand, kNoGroup},
    {"PLAN", ACRX_CMD_MODAL, planCommand, kNoGroup},
    {"PLINE", ACRX_CMD_MODAL, plineCommand},
    {"PURGE", ACRX_CMD_MODAL, purgeCommand},
    {"-PURGE", ACRX_CMD_MODAL, purgeCommand},
    {"QSAVE", ACRX_CMD_MODAL, qsaveCommand, kNoGroup},
    {"QUIT", ACRX_CMD_MODAL, quitCommand, kNoGroup, kWithoutDrawing},
    {"REDO", ACRX_CMD_MODAL, redoCommand, kNoGroup},
    {"REDRAW", ACRX_CMD_TRANSPARENT, redrawCommand, kNoGroup},
    {"REDRAWALL", ACRX_CMD_TRANSPARENT, redrawCommand, kNoGroup},
    {"REGEN", ACRX_CMD_MODAL, regenCommand},
    {"REGENALL", ACRX_CMD_MODAL, regenCommand},
    {"ROTATE", ACRX_CMD_USEPICKSET, rotateCommand},
    {"SAVEAS", ACRX_CMD_MODAL, saveasCommand, kNoGroup},
    {"SCALE", ACRX_CMD_USEPICKSET, scaleCommand},
    {"SETVAR", ACRX_CMD_TRANSPARENT, setvarCommand},
    {"TEXT", ACRX_CMD_MODAL, textCommand},
    {"U", ACRX_CMD_MODAL, uCommand, kNoGroup},
    {"UCS", ACRX_CMD_MODAL, ucsCommand},
    {"UNDO", ACRX_CMD_MODAL, undoCommand, kNoGroup},
    {"VPOINT", ACRX_CMD_MODAL, vpointCommand, kNoGroup},
    {"WBLOCK", ACRX_CMD_MODAL, wblockCommand},
    {"-WBLOCK", ACRX_CMD_MODAL, wblockCommand},
    {"XREF", ACRX_CMD_MODAL, xrefCommand},
    {"-XREF", ACRX_CMD_MODAL, xrefCommand},
    {"ZOOM", ACRX_CMD_TRANSPARENT, zoomCommand, kNoGroup},
};

} // namespace

std::span<const BuiltInCommand> builtInCommands() { return kCommands; }

} // namespace vndk::host
