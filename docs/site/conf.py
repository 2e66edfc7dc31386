"""The pages of finites. script/docs runs Sphinx with it on the gathered documents."""
import os

project = "finites"
author = "the authors of finites"
release = version = os.environ["FINITES_VERSION"]
extensions = ["myst_parser", "sphinx.ext.autodoc", "sphinx.ext.napoleon"]
myst_heading_anchors = 4
highlight_language = "text"  # of blocks that name no language: commands and their output
html_theme = "furo"
html_title = f"finites {version}"
html_show_copyright = False
html_static_path = ["static"]
html_css_files = ["wide.css"]
# The shortcut links of the theory are defined at its end; a lexer that does not know a dialect shows plain text.
suppress_warnings = ["misc.highlighting_failure"]
exclude_patterns = []
autodoc_typehints = "description"
autodoc_member_order = "bysource"
