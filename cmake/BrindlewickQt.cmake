# What the targets that draw have of their own: Qt wants other code generation, hence a second precompiled header, and
# its classes with signals want the meta-object compiler.

add_library(BrindlewickQtPrecompiled OBJECT ${PROJECT_BINARY_DIR}/Precompiled.cpp)
target_link_libraries(BrindlewickQtPrecompiled PRIVATE Qt6::Gui)
target_precompile_headers(BrindlewickQtPrecompiled PRIVATE ${PROJECT_SOURCE_DIR}/cmake/QtPrecompiled.h)

# Stand in for brindlewick_module and brindlewick_program wherever Qt is linked, if only by way of a module.
function(brindlewick_qt_module TARGET)
    target_include_directories(${TARGET} PUBLIC ${PROJECT_SOURCE_DIR}/Sources)
    set_target_properties(${TARGET} PROPERTIES AUTOMOC ON)
    target_precompile_headers(${TARGET} REUSE_FROM BrindlewickQtPrecompiled)
    target_link_libraries(${TARGET} ${ARGN})
endfunction()

function(brindlewick_qt_program TARGET)
    set_target_properties(${TARGET} PROPERTIES AUTOMOC ON)
    target_precompile_headers(${TARGET} REUSE_FROM BrindlewickQtPrecompiled)
    target_link_libraries(${TARGET} PRIVATE ${ARGN})
endfunction()
